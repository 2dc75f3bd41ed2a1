#pragma once

#include <atomic>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// A whole number in memory. The value alone may be read and set on any thread: the frame counter is.
template <typename T>
class NumberFeature : public AdapterFeature {
public:
    NumberFeature() : AdapterFeature(FeatureType::Integer) {}

    T value() const { return m_value.load(std::memory_order_relaxed); }
    /// Tells no observer.
    void setValue(T value) { m_value.store(value, std::memory_order_relaxed); }

protected:
    void doRead(char* val) override;
    /// Throws AIKException and keeps the value if the text doesn't begin with a number that fits.
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    std::atomic<T> m_value{};
};

extern template class NumberFeature<int>;
extern template class NumberFeature<unsigned int>;
extern template class NumberFeature<unsigned long long>;

}   // namespace orvo::cognex

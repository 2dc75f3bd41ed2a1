#pragma once

#include <functional>
#include <utility>

namespace orvo::cognex {

class AdapterFeature;

/// Hears that a feature was written, on the thread that wrote it.
class FeatureObserver {
public:
    virtual ~FeatureObserver() = default;

    virtual void featureChanged(AdapterFeature* feature) = 0;
};

/// Calls a function. The feature keeps a plain pointer: whoever owns this keeps it as long as the feature can
/// be written.
class FeatureObserverCallback : public FeatureObserver {
public:
    using Callback = std::function<void(AdapterFeature*)>;

    void setCallback(Callback callback) { m_callback = std::move(callback); }
    /// Throws std::bad_function_call if no function was set.
    void featureChanged(AdapterFeature* feature) override { m_callback(feature); }

private:
    Callback m_callback;
};

}   // namespace orvo::cognex

#pragma once

#include <string>
#include <utility>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// A text in memory, of any length; a read gives its first 255 characters.
class StringFeature : public AdapterFeature {
public:
    StringFeature() : AdapterFeature(FeatureType::String) {}

    std::string value() const { return m_value; }
    /// Tells no observer.
    void setValue(std::string value) { m_value = std::move(value); }

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    std::string m_value;
};

}   // namespace orvo::cognex

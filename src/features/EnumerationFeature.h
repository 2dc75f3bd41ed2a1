#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "features/AdapterFeature.h"

namespace orvo::cognex {

/// A choice from a closed list of names, each with a number: the host uses the names, the owner the numbers.
/// Throws: runtime_error, to which the container adds nothing.
class EnumerationFeature : public AdapterFeature {
public:
    EnumerationFeature() : AdapterFeature(FeatureType::Enumeration) {}

    /// A repeated key or value replaces the earlier entry in its own direction only.
    void addEntry(const std::string& key, int32_t value);
    /// With the number of entries so far as the value.
    void addEntry(const std::string& key);

    int32_t value() const { return m_value; }
    /// Checks nothing and calls no observer.
    void setValue(int32_t value) { m_value = value; }

    /// `index` is an entry's value here, not its position.
    std::string validEnum(int32_t index) override;

protected:
    void doRead(char* val) override;
    /// Calls the observers, and then write() calls them again.
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    std::map<std::string, int32_t> m_keyToValue;
    std::map<int32_t, std::string> m_valueToKey;
    int32_t m_value = 0;
};

}   // namespace orvo::cognex

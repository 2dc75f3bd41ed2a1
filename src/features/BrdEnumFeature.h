#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "features/BrdFeature.h"

namespace orvo::cognex {

/// A parameter of an applet that is a choice: the host uses names, the library numbers, and the library's own
/// table maps them to each other. Empty until the first refresh().
class BrdEnumFeature : public BrdFeature {
public:
    BrdEnumFeature() : BrdFeature(FeatureType::Enumeration) {}

    /// Reads the table again. Throws runtime_error, and keeps the old entries, if the library refuses or its
    /// table is malformed.
    void refresh() override;
    /// `index` is a position in the table, from 0: the library's numbers may have gaps, the host's list must not.
    std::string validEnum(int32_t index) override;
    bool hasPosition(int32_t position) const;

protected:
    void doRead(char* val) override;
    void doWrite(const char* val) override;
    void doExecute() override;

private:
    std::map<std::string, int32_t> m_keyToValue;
    std::map<int32_t, std::string> m_valueToKey;
    std::vector<std::string> m_keys;   // in the table's order
};

}   // namespace orvo::cognex

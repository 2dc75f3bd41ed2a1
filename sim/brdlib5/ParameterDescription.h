#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sim/brdlib5/Value.h"

namespace orvo::sim {

/// An entry of an enumeration.
struct ParameterEntry {
    int32_t value = 0;
    std::string name;
};

/// A parameter that an applet has besides the built-in ones. The values are of the form that the type has.
struct ParameterDescription {
    int32_t id = 0;
    std::string name;
    ValueType type = ValueType::Int32;
    Value value;                           // of each DMA when the board is opened
    std::optional<Value> least, most;      // of a number; nothing: as far as the type goes
    std::vector<ParameterEntry> entries;   // of an enumeration, which takes nothing else
    std::string text;                      // a word about it, empty for none
    bool isWriteable = true;

    /// Whether `candidate`, of the form that the type has, is in the range or an entry.
    bool takes(const Value& candidate) const;
};

}   // namespace orvo::sim

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "sim/brdlib5/Value.h"
#include "sim/json/Json.h"

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

/// Reads the parameters that an applet file lists. Throws JsonError with what is wrong and where.
std::vector<ParameterDescription> readParameters(const JsonValue& list);

}   // namespace orvo::sim

/// The parameters that every applet has, unless its file says that it lacks them. No other parameter can have
/// their ids and names.
namespace orvo::sim::built_in {

struct ParameterName {
    int32_t id;
    const char* name;
};

inline constexpr ParameterName kWidth{100, "BRD_WIDTH"};
inline constexpr ParameterName kHeight{200, "BRD_HEIGHT"};
inline constexpr ParameterName kXOffset{300, "BRD_XOFFSET"};
inline constexpr ParameterName kYOffset{400, "BRD_YOFFSET"};
inline constexpr ParameterName kFormat{700, "BRD_FORMAT"};
inline constexpr ParameterName kDmaCount{3050, "BRD_DMA_COUNT"};
inline constexpr ParameterName kCameraPortCount{3060, "BRD_CAMERA_PORT_COUNT"};
inline constexpr ParameterName kProcessCount{3070, "BRD_PROCESS_COUNT"};
inline constexpr ParameterName kDmaId{3080, "BRD_DMA_ID"};
inline constexpr ParameterName kCameraPort{3090, "BRD_CAMERA_PORT"};
inline constexpr ParameterName kTimestamp{22030, "BRD_TIMESTAMP"};   // of a picture, by Brd_getParameterEx

inline constexpr ParameterName kAll[] = {kWidth,  kHeight,     kXOffset,         kYOffset,
                                         kFormat, kDmaCount,   kCameraPortCount, kProcessCount,
                                         kDmaId,  kCameraPort, kTimestamp};

}   // namespace orvo::sim::built_in

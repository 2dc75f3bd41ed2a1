#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "aik/aik.hpp"
#include "aikctl/adapter/CheckedWrite.h"

namespace orvo::aikctl {

inline constexpr std::string_view kIntegerKind = "integer";

/// How the parameters of one kind of device are reached: its name goes to a key feature, and one of several
/// value features, that of the right type, then reads and writes it.
struct ParameterAccess {
    struct ValueFeature {
        const char* feature;
        std::string_view kind;   // of the parameter, for people
    };

    const char* keyFeature;
    std::span<const ValueFeature> values;
};

/// The board's own parameters, and those of the selected camera.
extern const ParameterAccess kBoardParameters;
extern const ParameterAccess kCameraParameters;

struct Parameter {
    const ParameterAccess::ValueFeature* by;   // the feature that reaches it
    std::string value;
};

/// Reads the parameter, whatever its kind; none if the device has no such parameter that can be read. Throws
/// aik::Error if no key can be written, because no camera is selected.
std::optional<Parameter> readParameter(aik::Channel& channel, const ParameterAccess& access,
                                       const std::string& name);

/// Writes the parameter, whatever its kind, and reads it back, as writeChecked() does. Booleans are "True" and
/// "False", and mean what they say. Throws what writeChecked() throws, and aik::Error for an unknown name.
Written writeParameter(aik::Channel& channel, const ParameterAccess& access, const std::string& name,
                       const std::string& value);

/// The feature that holds the key for `feature`, which reaches a parameter by key; empty if it needs no key.
std::string keyFeatureOf(const std::string& feature);

}   // namespace orvo::aikctl

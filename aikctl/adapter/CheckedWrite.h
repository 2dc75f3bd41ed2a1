#pragma once

#include <optional>
#include <string>

#include "aik/aik.hpp"

namespace orvo::aikctl {

/// What a feature holds after a write.
struct Written {
    std::optional<std::string> value;   // as it is read back; none if the feature can't be read
    std::string note;                   // what the user may not expect; empty if there is nothing
};

/// Writes a text and reads it back. The adapter takes what begins with a number for that number, and a device
/// may take another value than it is given. Here both are failures.
/// Numbers are compared as such, floats to the six digits that the adapter shows; a note tells of a rounded one.
/// Throws runtime_error for a text that is no such number, and for a value that reads back differently;
///         aik::Error for what the adapter refuses.
Written writeChecked(aik::Channel& channel, const std::string& feature, const std::string& text);

/// Switches a boolean feature on or off, and reads it back.
Written writeSwitch(aik::Channel& channel, const std::string& feature, bool isOn);

/// Writes a text as it is, and reads the value without comparing. Throws aik::Error.
Written writeAsIs(aik::Channel& channel, const std::string& feature, const std::string& text);

/// Whether both texts are the same value of this type. Texts that are no numbers are compared as they are.
bool isSameValue(aik::FeatureType type, const std::string& left, const std::string& right);

}   // namespace orvo::aikctl

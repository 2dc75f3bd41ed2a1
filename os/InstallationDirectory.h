#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvo::os {

/// The installation that the library at `modulePath` belongs to: the parent of the nearest folder above it
/// that is named "bin", "dll", "Hardware Applets", "lib" or "lib64", in any case. None if there is no such
/// folder. Works on the text alone, so paths of either system can be given on both.
std::optional<std::string> installationOf(std::string_view modulePath, char separator);

/// The installation that serves the library at `modulePath` on this machine: the one it belongs to, else what
/// the variable ORVODIR5_64 or, without it, ORVODIR5 names, less separators at its end. None without all
/// three.
std::optional<std::string> installationServing(std::string_view modulePath);

}   // namespace orvo::os

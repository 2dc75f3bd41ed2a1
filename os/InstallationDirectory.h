#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace orvo::os {

/// The installation that the library at `modulePath` belongs to: the parent of the nearest folder above it
/// that is named "bin", "dll", "Hardware Applets", "lib" or "lib64", in any case. None if there is no such
/// folder. Works on the text alone, so paths of either system can be given on both.
std::optional<std::string> installationOf(std::string_view modulePath, char separator);

}   // namespace orvo::os

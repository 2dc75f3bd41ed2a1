#pragma once

#include <string_view>

namespace orvo::aikctl {

// Texts of the adapter that mean something to a program.
inline constexpr const char* kTrue = "True";
inline constexpr const char* kFalse = "False";

/// Whether that is why a feature was refused: its time has not come, or is over.
inline bool saysNotAvailable(std::string_view failure)
{
    return failure.find("Feature is not available.") != std::string_view::npos;
}

}   // namespace orvo::aikctl

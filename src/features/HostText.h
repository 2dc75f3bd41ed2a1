#pragma once

#include <cstring>
#include <string>
#include <string_view>

namespace orvo::cognex {

inline constexpr size_t kHostTextSize = 256;   // of the host's buffers for values and failures, with the NUL

/// Copies the whole text and its NUL: for texts that are short by their nature.
inline void copyWhole(char* destination, const std::string& text)
{
    std::memcpy(destination, text.c_str(), text.size() + 1);
}

/// Copies at most 255 characters and puts a NUL behind them.
inline void copyBounded(char* destination, std::string_view text)
{
    destination[text.copy(destination, kHostTextSize - 1)] = '\0';
}

}   // namespace orvo::cognex

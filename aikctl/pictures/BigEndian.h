#pragma once

#include <concepts>
#include <cstdint>
#include <vector>

namespace orvo::aikctl {

/// Appends a number with its upper byte first.
template <std::unsigned_integral T>
void appendBigEndian(std::vector<uint8_t>& file, T number)
{
    for (size_t shift = 8 * sizeof(T); shift > 0; shift -= 8)
        file.push_back(static_cast<uint8_t>(number >> (shift - 8)));
}

}   // namespace orvo::aikctl

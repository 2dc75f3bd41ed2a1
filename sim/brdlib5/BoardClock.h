#pragma once

#include <chrono>
#include <cstdint>

namespace orvo::sim {

/// The clock that time stamps are taken from. Ticks of 8 ns.
inline constexpr uint64_t kTimestampFrequency = 125'000'000;

using BoardTicks = std::chrono::duration<uint64_t, std::ratio<1, kTimestampFrequency>>;

inline uint64_t timestampOf(std::chrono::steady_clock::time_point time)
{
    return std::chrono::duration_cast<BoardTicks>(time.time_since_epoch()).count();
}

}   // namespace orvo::sim

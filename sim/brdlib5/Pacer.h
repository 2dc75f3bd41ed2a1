#pragma once

#include <chrono>
#include <cstdint>
#include <random>

#include "sim/seam/Core.h"

namespace orvo::sim {

/// The clock that time stamps are taken from. Ticks of 8 ns.
inline constexpr uint64_t kTimestampFrequency = 125'000'000;

using BoardTicks = std::chrono::duration<uint64_t, std::ratio<1, kTimestampFrequency>>;

inline uint64_t timestampOf(std::chrono::steady_clock::time_point time)
{
    return std::chrono::duration_cast<BoardTicks>(time.time_since_epoch()).count();
}

/// When the pictures of one run are due. The schedule is absolute: a late picture doesn't delay the next
/// ones. The first picture comes one picture time after the start, and never before kFirstExposure. Threads:
/// one at a time.
class Pacer {
public:
    using Clock = std::chrono::steady_clock;

    /// `rate` in pictures per second; 0: every picture is due at once, but for the first.
    Pacer(double rate, const PictureFaults& faults, Clock::time_point start);

    /// The time of the next picture.
    Clock::time_point due() const { return m_due; }
    /// On to the next picture.
    void advance();

    /// How much later than due the next picture comes.
    std::chrono::nanoseconds nextJitter();

private:
    const double m_periodNs;   // 0: no schedule
    const std::chrono::nanoseconds m_jitter;
    std::mt19937_64 m_random;   // the same numbers for the same seed, on every system
    const Clock::time_point m_first;
    uint64_t m_picture = 0;   // from 0 here
    Clock::time_point m_due;
};

}   // namespace orvo::sim

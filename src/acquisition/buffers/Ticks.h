#pragma once

#include <chrono>
#include <cstdint>
#include <ratio>

#include "os/TimedLock.h"

namespace orvo::cognex {

/// Durations of the acquisition path, and points in time as durations since the beginning of the steady clock.
using Ticks = std::chrono::duration<int64_t, std::ratio<1, 10'000'000>>;   // 100 ns

Ticks now();

/// now() + timeout, or the largest time if that doesn't fit.
Ticks deadlineAfter(Ticks timeout);

/// The sum without a guard: it wraps where it doesn't fit.
Ticks wrappingSum(Ticks a, Ticks b);

/// The point in time for a lock, clamped to what the clock can hold.
os::Deadline timePoint(Ticks sinceBeginning);

}   // namespace orvo::cognex

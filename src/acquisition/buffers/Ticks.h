#pragma once

#include <cstdint>
#include <ratio>

#include <boost/chrono.hpp>

namespace orvo::cognex {

/// Durations of the acquisition path, and points in time as durations since 1 January 1970, of the system
/// clock.
using Ticks = boost::chrono::duration<int64_t, boost::ratio<1, 10'000'000>>;   // 100 ns

Ticks now();

/// now() + timeout, or the largest time if that doesn't fit.
Ticks deadlineAfter(Ticks timeout);

/// The sum without a guard: it wraps where it doesn't fit.
Ticks wrappingSum(Ticks a, Ticks b);

/// The point in time for Boost, not before now: clamped to what the platform's clocks can hold.
boost::chrono::system_clock::time_point timePoint(Ticks sinceEpoch);

}   // namespace orvo::cognex

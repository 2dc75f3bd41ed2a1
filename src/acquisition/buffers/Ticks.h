#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <ratio>

#include "os/TimedLock.h"

namespace orvo::cognex {

/// Durations of the acquisition path, and points in time as durations since the beginning of the steady clock.
using Ticks = std::chrono::duration<int64_t, std::ratio<1, 10'000'000>>;   // 100 ns

Ticks now();

/// now() + timeout, or the largest time if that doesn't fit.
Ticks deadlineAfter(Ticks timeout);

/// now() + timeout without a guard: it wraps where it doesn't fit.
Ticks wrappingDeadlineAfter(Ticks timeout);

/// The end of a timeout that begins with the first question for it: an image that is there costs no clock.
class LateDeadline {
public:
    using Rule = Ticks (*)(Ticks timeout);

    explicit LateDeadline(Ticks timeout, Rule rule = deadlineAfter) : m_timeout(timeout), m_rule(rule) {}

    Ticks get()
    {
        if (!m_deadline)
            m_deadline = m_rule(m_timeout);
        return *m_deadline;
    }

private:
    Ticks m_timeout;
    Rule m_rule;
    std::optional<Ticks> m_deadline;
};

/// The point in time for a lock, clamped to what the clock can hold.
os::Deadline timePoint(Ticks sinceBeginning);

}   // namespace orvo::cognex

#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>

namespace orvo::sim {

/// When a camera exposes for one stream. The schedule of a free-running camera is absolute, as long as its
/// rate stays: a late picture doesn't delay the next ones. Threads: one at a time.
class ExposureSchedule {
public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;

    /// What the camera does at the moment.
    struct Pace {
        bool isSending = false;
        bool isTriggered = false;
        std::chrono::nanoseconds period{0};   // of a camera that runs free; above 0
    };

    explicit ExposureSchedule(Time opened);

    /// One more picture, for a camera that is triggered.
    void trigger(Time time);

    /// When the next picture can be taken if nothing changes; nothing while there is none to come.
    std::optional<Time> due(const Pace& pace, Time now);
    /// Takes the picture that is due, and answers its time.
    Time take();

private:
    const Time m_earliest;
    std::deque<Time> m_triggers;
    bool m_isTriggered = false;
    bool m_isAnchored = false;   // not while stopped
    Time m_anchor;               // one period before the first picture of this rate
    std::chrono::nanoseconds m_period{0};
    int64_t m_taken = 0;   // since the anchor
};

}   // namespace orvo::sim

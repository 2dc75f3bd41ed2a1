#include "sim/simulator/ExposureSchedule.h"

#include <algorithm>
#include <utility>

#include "sim/seam/Core.h"

namespace orvo::sim {

ExposureSchedule::ExposureSchedule(Time opened) : m_earliest(opened + kFirstExposure) {}

void ExposureSchedule::trigger(Time time)
{
    m_triggers.push_back(time);
}

std::optional<ExposureSchedule::Time> ExposureSchedule::due(const Pace& pace, Time now)
{
    m_isTriggered = pace.isTriggered;
    if (!pace.isSending || pace.isTriggered)
        m_isAnchored = false;
    if (!pace.isSending || !pace.isTriggered)
        m_triggers.clear();
    if (!pace.isSending)
        return std::nullopt;
    if (pace.isTriggered)
        return m_triggers.empty() ? std::nullopt : std::optional(std::max(m_triggers.front(), m_earliest));
    if (!std::exchange(m_isAnchored, true)) {
        m_anchor = std::max(now, m_earliest - pace.period);
        m_taken = 0;
    } else if (m_period != pace.period) {
        // What the old rate left to come is not owed at the new one.
        m_anchor = std::max(m_anchor + m_taken * m_period, now - pace.period);
        m_taken = 0;
    }
    m_period = pace.period;
    return m_anchor + (m_taken + 1) * m_period;
}

ExposureSchedule::Time ExposureSchedule::take()
{
    if (!m_isTriggered)
        return m_anchor + ++m_taken * m_period;
    const Time time = m_triggers.front();
    m_triggers.pop_front();
    return time;
}

}   // namespace orvo::sim

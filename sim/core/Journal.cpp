#include "sim/core/Journal.h"

namespace orvo::sim {

Journal::Place Journal::begin(std::string_view function, std::string_view arguments)
{
    const std::lock_guard lock(m_mutex);
    if (m_lines.size() >= m_limit)
        return {};
    m_lines.push_back({std::string(function), std::string(arguments), " ..."});
    noteRecording();
    return {m_lines.size() - 1, m_epoch};
}

void Journal::end(Place place, std::string_view rest)
{
    const std::lock_guard lock(m_mutex);
    if (place.epoch == m_epoch)
        m_lines[static_cast<size_t>(place.line)].rest = rest;
}

std::string Journal::text(const FunctionFilter& filter, uint64_t from) const
{
    const std::lock_guard lock(m_mutex);
    std::string text;
    for (auto i = static_cast<size_t>(from); i < m_lines.size(); ++i) {
        const Line& line = m_lines[i];
        if (!filter.keeps(line.function))
            continue;
        text += line.function;
        if (!line.arguments.empty())
            text += " " + line.arguments;
        text += line.rest + "\n";
    }
    return text;
}

uint64_t Journal::count() const
{
    const std::lock_guard lock(m_mutex);
    return m_lines.size();
}

void Journal::clear()
{
    const std::lock_guard lock(m_mutex);
    m_lines.clear();
    ++m_epoch;
    noteRecording();
}

void Journal::setLimit(uint64_t lines)
{
    const std::lock_guard lock(m_mutex);
    m_limit = lines;
    noteRecording();
}

void Journal::noteRecording()
{
    m_recording.store(m_lines.size() < m_limit, std::memory_order_relaxed);
}

}   // namespace orvo::sim

#include "sim/simulator/Journal.h"

#include <algorithm>

namespace orvo::sim {

namespace {

std::vector<std::string> wordsOf(std::string_view text)
{
    std::vector<std::string> words;
    while (!text.empty()) {
        const size_t end = std::min(text.find(' '), text.size());
        if (end > 0)
            words.emplace_back(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return words;
}

bool isNamedBy(std::string_view function, std::string_view word)
{
    if (word.ends_with('*'))
        return function.starts_with(word.substr(0, word.size() - 1));
    return function == word;
}

bool isNamedByAny(std::string_view function, const std::vector<std::string>& words)
{
    return std::any_of(words.begin(), words.end(),
                       [&](const std::string& word) { return isNamedBy(function, word); });
}

}   // namespace

CallPattern::CallPattern(std::string_view text) : m_text(text), m_words(wordsOf(text)) {}

bool CallPattern::matches(std::string_view function, std::string_view arguments) const
{
    if (m_words.empty() || m_words.front() != function)
        return false;
    const std::vector<std::string> given = wordsOf(arguments);
    return std::all_of(m_words.begin() + 1, m_words.end(), [&](const std::string& word) {
        return std::find(given.begin(), given.end(), word) != given.end();
    });
}

FunctionFilter::FunctionFilter(std::string_view text)
{
    for (const std::string& word : wordsOf(text)) {
        if (word.starts_with('-'))
            m_dropped.push_back(word.substr(1));
        else
            m_kept.push_back(word);
    }
}

bool FunctionFilter::keeps(std::string_view function) const
{
    return (m_kept.empty() || isNamedByAny(function, m_kept)) && !isNamedByAny(function, m_dropped);
}

Journal::Place Journal::begin(std::string_view function, std::string_view arguments)
{
    const os::MutexLock lock(m_mutex);
    if (m_lines.size() >= m_limit)
        return {};
    m_lines.push_back({std::string(function), std::string(arguments), " ..."});
    noteRecording();
    return {m_lines.size() - 1, m_epoch};
}

void Journal::end(Place place, std::string_view rest)
{
    const os::MutexLock lock(m_mutex);
    if (place.epoch == m_epoch)
        m_lines[static_cast<size_t>(place.line)].rest = rest;
}

std::string Journal::text(const FunctionFilter& filter, uint64_t from) const
{
    const os::MutexLock lock(m_mutex);
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
    const os::MutexLock lock(m_mutex);
    return m_lines.size();
}

void Journal::clear()
{
    const os::MutexLock lock(m_mutex);
    m_lines.clear();
    ++m_epoch;
    noteRecording();
}

void Journal::setLimit(uint64_t lines)
{
    const os::MutexLock lock(m_mutex);
    m_limit = lines;
    noteRecording();
}

void Journal::noteRecording()
{
    m_recording.store(m_lines.size() < m_limit, std::memory_order_relaxed);
}

}   // namespace orvo::sim

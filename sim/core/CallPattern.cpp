#include "sim/core/CallPattern.h"

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

}   // namespace orvo::sim

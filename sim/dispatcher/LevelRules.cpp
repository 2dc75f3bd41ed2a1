#include "sim/dispatcher/LevelRules.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace orvo::sim {

namespace {

std::string trimmed(const std::string& text)
{
    const size_t begin = text.find_first_not_of(" \t");
    return begin == std::string::npos ? "" : text.substr(begin, text.find_last_not_of(" \t") + 1 - begin);
}

std::string lower(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
    return text;
}

}   // namespace

// Parsed here and not by spdlog's loader: that one keeps the levels in spdlog's registry, which is destroyed
// at exit while records may still flow, and passes over misspelled levels in silence.
LevelRules::LevelRules(const std::string& text)
{
    std::istringstream rules(text);
    for (std::string rule; std::getline(rules, rule, ',');)
        if (!trimmed(rule).empty())
            add(rule);
}

void LevelRules::add(const std::string& rule)
{
    const size_t equals = rule.find('=');
    const std::string levelName =
        lower(trimmed(equals == std::string::npos ? rule : rule.substr(equals + 1)));
    const auto level = spdlog::level::from_str(levelName);
    if (level == spdlog::level::off && levelName != "off")   // which is also its answer to an unknown name
        m_unknownLevels.push_back(levelName);
    else if (equals == std::string::npos)
        m_global = level;
    else
        m_byName[trimmed(rule.substr(0, equals))] = level;
}

spdlog::level::level_enum LevelRules::levelOf(const std::string& logger) const
{
    const auto rule = m_byName.find(logger);
    return rule == m_byName.end() ? m_global : rule->second;
}

}   // namespace orvo::sim

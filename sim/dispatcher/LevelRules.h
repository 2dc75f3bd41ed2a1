#pragma once

#include <map>
#include <string>
#include <vector>

#include <spdlog/common.h>

namespace orvo::sim {

/// Which level each logger has, from a text in spdlog's own syntax: "info,orvo.Cognex.DmaPort=trace" is
/// info for all and trace for one. Of two rules for one name the later counts.
class LevelRules {
public:
    explicit LevelRules(const std::string& text);

    /// The level of the logger of that name; warnings and worse where no rule says anything.
    spdlog::level::level_enum levelOf(const std::string& logger) const;

    /// What the text calls a level and is none. Those rules don't count.
    const std::vector<std::string>& unknownLevels() const { return m_unknownLevels; }

private:
    void add(const std::string& rule);

    spdlog::level::level_enum m_global = spdlog::level::warn;
    std::map<std::string, spdlog::level::level_enum> m_byName;
    std::vector<std::string> m_unknownLevels;
};

}   // namespace orvo::sim

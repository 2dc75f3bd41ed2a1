#include <gtest/gtest.h>

#include "sim/dispatcher/LevelRules.h"

namespace orvo::sim {
namespace {

using spdlog::level::level_enum;

TEST(LevelRules, LetWarningsThroughWhereNothingIsSaid)
{
    EXPECT_EQ(LevelRules("").levelOf("a"), level_enum::warn);
    EXPECT_EQ(LevelRules("b=trace").levelOf("a"), level_enum::warn);
    EXPECT_EQ(LevelRules(" , ,").levelOf(""), level_enum::warn);
}

TEST(LevelRules, TakeOneLevelForAllAndOthersByName)
{
    const LevelRules rules(" info , orvo.Cognex.DmaPort = TRACE,b=off,c=err,b=critical");
    EXPECT_EQ(rules.levelOf("a"), level_enum::info);
    EXPECT_EQ(rules.levelOf("orvo.Cognex.DmaPort"), level_enum::trace);
    EXPECT_EQ(rules.levelOf("orvo.Cognex.dmaport"), level_enum::info);
    EXPECT_EQ(rules.levelOf("b"), level_enum::critical);
    EXPECT_EQ(rules.levelOf("c"), level_enum::err);
    EXPECT_TRUE(rules.unknownLevels().empty());
}

TEST(LevelRules, TellWhatIsNoLevelAndGoOn)
{
    const LevelRules rules("loud,a=debug,b=,off,c=7");
    EXPECT_EQ(rules.unknownLevels(), (std::vector<std::string>{"loud", "", "7"}));
    EXPECT_EQ(rules.levelOf("a"), level_enum::debug);
    EXPECT_EQ(rules.levelOf("b"), level_enum::off);
}

}   // namespace
}   // namespace orvo::sim

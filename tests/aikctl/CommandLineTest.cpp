#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

using CommandLine = AikctlTest;

TEST_F(CommandLine, SaysWhatIsWrongWithIt)
{
    const std::pair<std::vector<std::string>, std::string> misuses[] = {
        {{}, "No command is given"},
        {{"grow"}, "grow"},
        {{"grab", "first"}, "first is neither a channel's number nor all"},
        {{"grab", "--", "-1"}, "-1 is neither"},
        {{"grab", "1x"}, "1x is neither"},
        {{"grab", "--count", "0"}, "--count"},
        {{"grab", "--count", "-3"}, "--count"},
        {{"grab", "--strategy", "Newest"}, "NewestOnly"},
        {{"grab", "--timeout", "0"}, "--timeout"},
        {{"list", "--count", "3"}, "--count"},
    };
    for (const auto& [arguments, complaint] : misuses) {
        const Outcome misuse = run(arguments);
        EXPECT_EQ(misuse.exitCode, 2) << misuse.err;
        EXPECT_NE(misuse.err.find(complaint), std::string::npos) << misuse.err;
        EXPECT_EQ(misuse.out, "");
    }
}

TEST_F(CommandLine, HelpsOnTheStreamOfResults)
{
    const Outcome help = run({"grab", "--help"});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.out.find("--strategy"), std::string::npos);
    EXPECT_EQ(help.err, "");
}

}   // namespace
}   // namespace orvo::aikctl

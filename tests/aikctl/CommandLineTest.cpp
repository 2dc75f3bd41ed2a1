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
        {{"grab", "--set", "Width"}, "Width is no NAME=VALUE"},
        {{"grab", "--no-camera", "--action"}, "--no-camera"},
        {{"do", "0"}, "STEP"},
        {{"do", "0", "get", "PortCount", "put"}, "put is no step"},
        {{"do", "0", "get"}, "get lacks its feature"},
        {{"set", "0", "BufferCount"}, "set BufferCount has no value"},
        {{"get", "-1", "BufferCount"}, "CHANNEL"},
        {{"get", "0", "BufferCount", "--key", "Width"}, "--key Width is for none of the features"},
        {{"get", "0", "PortIndex", "--port", "1"}, "--camera"},
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

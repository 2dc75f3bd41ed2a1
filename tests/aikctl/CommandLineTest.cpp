#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

using CommandLine = AikctlTest;

TEST_F(CommandLine, SaysWhatIsWrongAndOpensNothing)
{
    const std::pair<std::string, std::string> misuses[] = {
        {"", "No command is given"},
        {"grow", "grow"},
        {"grab -- -1", "-1 is neither"},
        {"grab 1x", "1x is neither a channel's number nor all"},
        {"grab --count 0", "--count"},
        {"grab --strategy Newest", "NewestOnly"},
        {"grab --timeout 0", "--timeout"},
        {"list --count 3", "--count"},
        {"grab --set Width", "Width is no NAME=VALUE"},
        {"grab --no-camera --action", "--no-camera"},
        {"do 0", "STEP"},
        {"do 0 get PortCount put", "put is no step: get FEATURE, set FEATURE=VALUE or exec FEATURE"},
        {"do 0 get", "get lacks its feature"},
        {"set 0 BufferCount", "set BufferCount has no value"},
        {"get -1 BufferCount", "CHANNEL"},
        {"get 0 BufferCount --key Width", "--key Width is for none of the features"},
        {"get 0 PortIndex --port 1", "--camera"},
    };
    for (const auto& [arguments, complaint] : misuses) {
        const Outcome misuse = run(arguments);
        EXPECT_EQ(misuse.exitCode, 2) << misuse.err;
        EXPECT_THAT(misuse.err, HasSubstr(complaint));
        EXPECT_EQ(misuse.out, "");
    }
    EXPECT_EQ(OrvoSim_countJournal(), 0U);
}

TEST_F(CommandLine, PrintsHelpWhereResultsGo)
{
    const Outcome help = run("grab --help");
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_THAT(help.out, HasSubstr("--strategy"));
    EXPECT_EQ(help.err, "");
}

}   // namespace
}   // namespace orvo::aikctl

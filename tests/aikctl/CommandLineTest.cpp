#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <tuple>

#include "aikctl/commands/CommandLine.h"
#include "aikctl/console/Console.h"
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
        {"grab --count 0", "--count: 0 is no whole number from 1 to 1000000000"},
        {"grab --count 18446744073709551616", "--count"},
        {"features abc", "CHANNEL: abc is no whole number from 0 to 9999"},
        {"help grow", "grow"},
        {"grab --strategy Newest", "NewestOnly"},
        {"grab --timeout 0", "--timeout"},
        {"grab --timeout nan", "--timeout: nan is no number of seconds from 0.001 to 86400"},
        {"grab --seconds nan", "--seconds"},
        {"grab --seconds inf", "--seconds"},
        {"do 0 setup --timeout nan", "--timeout"},
        {"list --count 3", "not expected: --count 3\n"},
        {"features --wrong", "not expected: --wrong\n"},   // rather than that the channel is missing
        {"grab --set Width", "Width is no NAME=VALUE"},
        {"grab --no-camera --action", "--no-camera"},
        {"grab 0 --discard --output -", "--discard"},
        {"grab --discard --overwrite", "--discard"},
        {"grab --discard --raw", "--discard"},
        {"grab --discard --index", "--discard"},
        {"grab 0 --output - --index", "--index: standard output has no table"},
        {"grab 0 --output - --overwrite", "--overwrite: standard output has no older"},
        {"grab 0 --output - --format png", "--format: standard output takes raw"},
        {"grab --raw --compression 1", "--compression: PNG files alone"},
        {"do 0", "STEP"},
        {"do 0 get PortCount put", "put is no step: get FEATURE, set FEATURE=VALUE, "},
        {"do 0 get", "get lacks its FEATURE"},
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
    for (const std::string arguments : {"grab --help", "help grab"}) {
        const Outcome help = run(arguments);
        EXPECT_EQ(help.exitCode, 0);
        for (const char* const option : {"--strategy", "--json", "--adapter"})
            EXPECT_THAT(help.out, HasSubstr(option));
        EXPECT_EQ(help.err, "");
    }
    EXPECT_EQ(run("help").out, run("--help").out);
    EXPECT_THAT(run("--version").out, testing::MatchesRegex("aikctl .+\\..+\n"));
}

TEST_F(CommandLine, PrintsOneJsonObjectHoweverItEnds)
{
    const std::tuple<std::string, int, std::string> runs[] = {
        {"list", 0, "list"},
        {"help set", 0, "help"},
        {"--version", 0, ""},
        {"", 2, ""},
        {"grow", 2, ""},
        {"grab --count 0", 2, "grab"},
        {"get 0 Nope", 1, "get"},
        {"features 99", 1, "features"},
        {"list --adapter nowhere", 3, "list"},
    };
    for (const auto& [arguments, exitCode, command] : runs) {
        const json object = run(arguments + " --json").json();
        EXPECT_EQ(object["command"], command);
        EXPECT_EQ(object["schema"], 1);
        EXPECT_EQ(object["exitCode"], exitCode) << arguments;
        EXPECT_EQ(object["failures"].empty(), exitCode == 0) << arguments;
        EXPECT_TRUE(object.contains("aikctl") && object["notes"].empty());
    }
}

TEST_F(CommandLine, HasAPageThatNamesEveryMemberOfItsJson)
{
    std::set<std::string> members;
    for (const std::string& arguments :
         {std::string("list"), std::string("features 0"), std::string("reference"), std::string("help"),
          std::string("do 0 setup start exec StartAcquisition get BufferCount grab 1 stop --camera --port 0"),
          "grab 0 1 --action --count 2 --output " + pictures().string()}) {
        const Outcome outcome = run(arguments + " --json");
        EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
        const json places = outcome.json().flatten();
        for (const auto& [place, value] : places.items()) {
            std::istringstream names(place);
            for (std::string name; std::getline(names, name, '/');)
                if (!std::regex_match(name, std::regex("[0-9]*")))
                    members.insert(name);
        }
    }
    const std::string page = textOf("json.md");
    for (const std::string& member : members)
        EXPECT_TRUE(std::regex_search(page, std::regex("\\b" + member + "\\b"))) << member;
}

TEST_F(CommandLine, ShowsUtf8AsItIsAndOtherBytesReadably)
{
    const std::pair<std::string, std::string> values[] = {
        {"Größe", "Größe"},
        {"\xE4\xF6", R"(\xE4\xF6)"},                   // Latin-1
        {"\xED\xA0\x80", R"(\xED\xA0\x80)"},           // half of a pair of UTF-16
        {"\xC0\xAF\xE2\x82", R"(\xC0\xAF\xE2\x82)"},   // too long, and cut
        {"\xF0\x9F\x93\xB7", "\U0001F4F7"},
    };
    for (const auto& [value, shown] : values) {
        const json object = run("do 0 set BrdFeatureKey=" + value + " get BrdFeatureKey --json").json();
        EXPECT_EQ(object["readings"][0]["value"], shown);
        EXPECT_THAT(run("do 0 set " + value + "=1").err, HasSubstr(shown));
    }
}

TEST_F(CommandLine, NoticesOutputThatFails)
{
    std::ofstream full("/dev/full");   // where there is none, the stream fails without a reason
    const std::string reason = full.is_open() ? "standard output: " : "standard output";
    std::ostringstream err;
    Console console(full, err, {}, [] { return false; });
    const char* const argv[] = {"aikctl", "list"};
    EXPECT_EQ(runCommandLine(2, argv, console), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("Can't write the results to " + reason));

    const char* const grab[] = {"aikctl", "grab", "0", "--output", "-"};
    full.clear();
    EXPECT_EQ(runCommandLine(5, grab, console), ExitStatus::Failed);
    EXPECT_THAT(err.str(), HasSubstr("Can't write to standard output: "));
}

}   // namespace
}   // namespace orvo::aikctl

#include <fstream>
#include <iterator>
#include <regex>

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

class List : public AikctlTest {
protected:
    // Whether each board and the board library were closed as often as they were opened.
    static void expectAllClosed(size_t boards)
    {
        EXPECT_EQ(journal("Brd_InitEx").size(), boards);
        EXPECT_EQ(journal("Brd_FreeGrabber").size(), boards);
        EXPECT_FALSE(journal("Brd_InitLibraries").empty());
        EXPECT_EQ(journal("Brd_FreeLibraries").size(), journal("Brd_InitLibraries").size());
        OrvoSim_clearJournal();
    }
};

TEST_F(List, ShowsEveryChannelAndWhyOneFailed)
{
    noApplet(1);
    const Outcome table = run("list");
    EXPECT_EQ(table.exitCode, 0);
    EXPECT_EQ(table.err, "");
    expectAllClosed(1);

    json list = run("list --json").json();
    std::string rows = "adapter " + list["adapter"].get<std::string>() + "\n\nchannel name size board\n";
    for (json& channel : list["channels"]) {
        const bool isFailed = channel["width"] == 0;
        EXPECT_THAT(channel["name"], HasSubstr(isFailed ? ": Invalid" : " process: 0 dma: "));
        EXPECT_THAT(channel["board"], HasSubstr(isFailed ? "SIM-1" : "SIM-0"));
        rows += channel["channel"].dump() + " " + channel["name"].get<std::string>() +
                (isFailed ? " failed " : " 640 x 480 ") + channel["board"].get<std::string>() + "\n";
        channel.erase("name");
        channel.erase("board");
    }
    EXPECT_EQ(list["channels"],
              (json{{{"channel", 0}, {"width", 640}, {"height", 480}, {"failure", ""}},
                    {{"channel", 1}, {"width", 640}, {"height", 480}, {"failure", ""}},
                    {{"channel", 2}, {"width", 0}, {"height", 0}, {"failure", noAppletFailure(1)}}}));
    rows += "channel 2 failed: " + noAppletFailure(1) + "\n";
    const std::regex blanks(" +");   // a name may end in one
    EXPECT_EQ(std::regex_replace(table.out, blanks, " "), std::regex_replace(rows, blanks, " "));
}

TEST_F(List, ClosesAChannelThatOpenedOnlyHalfWay)
{
    OrvoSim_answer("Brd_getParameter id=100", 1, -7);
    const json channels = run("list --json").json()["channels"];
    ASSERT_EQ(channels.size(), 3U);
    EXPECT_EQ(channels[0]["failure"], "Cannot get BRD_WIDTH");
    EXPECT_EQ(channels[1]["failure"], "");
    expectAllClosed(2);
}

TEST_F(List, ClosesTheLibraryWhenThereIsNoBoard)
{
    m_machine.boards({});
    const Outcome list = run("list");
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_EQ(list.out, "no channels: the adapter found no board\n");
    expectAllClosed(0);
}

using Features = AikctlTest;

json named(const json& list, const std::string& name)
{
    for (const auto& feature : list["features"])
        if (feature["name"] == name)
            return feature;
    return nullptr;
}

TEST_F(Features, AreShownAsTheyAreAndNotChanged)
{
    const json list = run("features 0 --json").json();
    EXPECT_EQ(journal("Brd_set* Brd_Add* Brd_Alloc* Brd_Acquire* Eth_* Ogc_*"), test::Lines());
    EXPECT_EQ(named(list, "AcquisitionStrategy")["value"], "OldestFirstOverwrite");
    EXPECT_EQ(named(list, "AcquisitionStrategy")["entries"].size(), 3U);
    EXPECT_EQ(named(list, "PortCount")["available"], false);
    EXPECT_EQ(named(list, "CameraCommand")["available"], false);   // can only be written
    EXPECT_EQ(named(list, "Detect")["available"], nullptr);
    EXPECT_EQ(named(list, "BrdIntValue")["available"], true);
    EXPECT_EQ(named(list, "BrdIntValue")["value"], nullptr);
    EXPECT_NE(named(list, "BrdIntValue")["failure"], "");

    const json connected = run("features 0 --camera --json").json();
    EXPECT_EQ(named(connected, "CameraName")["value"], "Camera 0-0");
    EXPECT_EQ(named(connected, "CameraCommand")["available"], true);
    EXPECT_EQ(named(connected, "EthActionCommand_Send")["available"], true);

    EXPECT_THAT(run("features 2").out, HasSubstr("\n4       BufferCount "));
}

// docs/features.md is what this prints. After a change: `aikctl reference > docs/features.md`.
TEST_F(Features, HaveAPageThatIsUpToDate)
{
    std::ifstream file("features.md", std::ios::binary);
    const std::string page((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
    EXPECT_EQ(run("reference").out, page);

    noApplet(1);   // one kind of camera is missing: no page rather than half of it
    EXPECT_EQ(run("reference").out, "");
}

using Steps = AikctlTest;

TEST_F(Steps, AreCarriedOutInOrderOnOneOpenChannel)
{
    const Outcome done =
        run("do 0 exec InitializeCameraConnector get PortCount exec Detect set PortIndex=1 get CameraName "
            "set CameraFeatureKey=Width set CameraIntValue=320 get CameraIntValue exec CloseCameraConnector");
    EXPECT_EQ(done.exitCode, 0) << done.err;
    EXPECT_EQ(done.out, "PortCount=2\nCameraName=Camera 0-1\nCameraIntValue=320\n");
}

TEST_F(Steps, HaveShortForms)
{
    const std::pair<std::string, std::string> forms[] = {
        {"set 0 BufferCount=9", ""},
        {"get 0 BufferCount", "5\n"},   // set, but on a channel that was closed since
        {"get 2 CameraFloatValue --camera --key ExposureTime", "10000\n"},
        {"get 0 CameraStringValue --camera --port 1 -k DeviceSerialNumber", "SIM-0-1\n"},
        {"get 0 BrdIntValue --key BRD_WIDTH", "640\n"},
        {"exec 2 CameraCommand --camera -k UserSetLoad", ""},
    };
    for (const auto& [arguments, output] : forms) {
        const Outcome done = run(arguments);
        EXPECT_EQ(done.exitCode, 0) << done.err;
        EXPECT_EQ(done.out, output);
    }
    EXPECT_EQ(journal("Ogc_executeCommand").size(), 1U);
    EXPECT_EQ(run("get 0 BufferCount --json").json()["readings"],
              (json::array({{{"feature", "BufferCount"}, {"value", "5"}}})));
}

TEST_F(Steps, EndAtTheFirstFailureAndCloseTheCamera)
{
    const Outcome done = run("do 0 --camera get PortCount set PortCount=7 get PortIndex");
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_EQ(done.out, "PortCount=2\n");
    EXPECT_EQ(done.err,
              "aikctl: set PortCount=7: Feature could not be written. (Feature is not writeable.)\n");
    EXPECT_EQ(journal("Eth_closeBoard").size(), 1U);

    const Outcome noCamera = run("get 0 CameraIntValue --key Width");
    EXPECT_EQ(noCamera.exitCode, 1);
    EXPECT_THAT(noCamera.err, HasSubstr("--camera does that"));
}

TEST_F(Steps, NeedAChannelThatWorks)
{
    noApplet(1);
    EXPECT_EQ(run("get 3 PortCount").err, "aikctl: There is no channel 3\n");
    EXPECT_EQ(run("get 2 PortCount").err, "aikctl: Channel 2: " + noAppletFailure(1) + "\n");
    EXPECT_EQ(journal("Brd_InitLibraries").size(), journal("Brd_FreeLibraries").size());
}

}   // namespace
}   // namespace orvo::aikctl

#include <algorithm>

#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

namespace fs = std::filesystem;

using testing::IsSupersetOf;
using testing::Not;

class GrabSettings : public AikctlTest {
protected:
    bool hasPictures() const { return fs::exists(pictures()) && !fs::is_empty(pictures()); }
};

TEST_F(GrabSettings, EndTheGrabWhenOneIsRefused)
{
    const std::pair<std::string, std::string> refused[] = {
        {"--set Gain=99",
         "channel 0, port 0: Gain=99: Feature could not be written. (eth error code: -3024)"},
        {"--set Gain=6dB", "channel 0, port 0: Gain=6dB: \"6dB\" is no decimal number"},
        {"--set ReverseX=yes", "channel 0, port 0: ReverseX=yes: it is either True or False"},
        {"--set Grain=1", "channel 0, port 0: Grain=1: Feature could not be read. (eth error code: -3020)"},
        {"--board-set BRD_FORMAT=77", "channel 0: BRD_FORMAT=77: Feature could not be written."},
        {"--roi 322x240", "channel 0, port 0: Width=322: Feature could not be written."},
    };
    for (const auto& [arguments, complaint] : refused) {
        const Outcome ended = grab("0 1 --count 1 " + arguments);
        EXPECT_EQ(ended.exitCode, 1);
        EXPECT_THAT(ended.err, testing::StartsWith("aikctl: " + complaint));
        EXPECT_EQ(std::ranges::count(ended.err, '\n'), 1) << ended.err;   // the first one alone
        EXPECT_FALSE(hasPictures());
    }
    EXPECT_TRUE(journal("Brd_AcquireEx").empty());

    const Outcome kept = grab("0 --count 1 --keep-going --set Gain=99 --set Grain=1");
    EXPECT_EQ(kept.exitCode, 1);
    for (const char* const setting : {"port 0: Gain=99", "port 0: Grain=1", "port 1: Gain"})
        EXPECT_THAT(kept.err, HasSubstr(setting));
    EXPECT_TRUE(hasPictures());
}

TEST_F(GrabSettings, AreReadBack)
{
    OrvoSim_answer("Eth_setFloatValue name=\"ExposureTime\"", 1, 0);   // says yes and does nothing
    EXPECT_THAT(grab("0 --count 1 --set ExposureTime=5000").err,
                HasSubstr("channel 0, port 0: ExposureTime=5000: it reads back as 10000"));
    const Outcome rounded = grab("0 --count 1 --set ExposureTime=5000.0123");
    EXPECT_EQ(rounded.exitCode, 0);
    EXPECT_THAT(rounded.err, HasSubstr("port 1: ExposureTime=5000.0123: it reads back as 5000.01, rounded"));
    EXPECT_EQ(grab("0 --count 1 --overwrite --set ExposureTime=+5e3").err, "");
}

TEST_F(GrabSettings, MakeARegionOfCameraAndBoard)
{
    const Outcome region = grab("0 1 --count 1 --roi 320x240+64+32 --json");
    EXPECT_EQ(region.exitCode, 0) << region.err;
    EXPECT_EQ(region.json()["channels"][1]["width"], 320);
    EXPECT_THAT(journal("Eth_set*"),
                IsSupersetOf({"Eth_setIntegerValue camera=c2 name=\"Height\" value=240 -> 0",
                              "Eth_setIntegerValue camera=c2 name=\"OffsetX\" value=64 -> 0"}));
    EXPECT_THAT(journal("Brd_setParameter"), Not(testing::Contains(HasSubstr("id=300 value=64"))));
    EXPECT_EQ(region.err, "");

    OrvoSim_clearJournal();
    grab("0 --count 1 --no-camera --timeout 0.01 --roi 320x240+64+32 --overwrite");
    EXPECT_THAT(journal("Brd_setParameter"), testing::Contains(HasSubstr("id=300 value=64")));
    OrvoSim_answer("Brd_setParameter id=400", 2, -5);   // the setup says nothing of it
    const Outcome cut = grab("0 --count 1 --no-camera --roi 320x240+64+32 --overwrite");
    EXPECT_EQ(cut.exitCode, 1);
    EXPECT_THAT(cut.err, HasSubstr("channel 0: BRD_YOFFSET=32: it reads back as 0"));

    EXPECT_THAT(
        grab("0 --count 1 --set Width=320 --set Height=240 --overwrite").err,
        HasSubstr("channel 0, port 1: the camera sends 320 x 240 and does not fill the board's pictures "
                  "of 640 x 480; --roi sets both"));
}

using Boards = AikctlTest;

TEST_F(Boards, ChooseChannelsThatNumbersCouldMiss)
{
    EXPECT_EQ(run("get --board SIM-1 BrdIntValue --key BRD_WIDTH").out, "640\n");
    EXPECT_EQ(run("features --board SIM-0:0.1 --json").json()["channel"], 1);
    EXPECT_EQ(run("do -b SIM-0:0.1 get BufferCount --json").json()["channel"], 1);

    const Outcome grabbed = grab("--board SIM-0 --board SIM-1:0.0 --count 1 --json");
    EXPECT_EQ(grabbed.exitCode, 0) << grabbed.err;
    EXPECT_EQ(grabbed.json()["channels"].size(), 3U);

    const std::pair<std::string, std::string> unclear[] = {
        {"SIM",
         "\"SIM\" is in the text of several boards:\n  Orvo Gigabit 1, serial number SIM-0, simulated\n  "},
        {"SIM-0",
         "\"SIM-0\" has several channels, add :PROCESS.DMA to it:\n  channel 0: Orvo Gigabit 1 process: "},
        {"SIM-0:0.7", "\"SIM-0:0.7\" is no channel. Those of the board are:\n  channel 0: "},
        {"LAB", "No board has \"LAB\" in its text. The boards are:\n  Orvo Gigabit 1, serial number SIM-0"},
    };
    for (const auto& [board, complaint] : unclear) {
        const Outcome refused = run("get BufferCount --board " + board);
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.err, testing::StartsWith("aikctl: " + complaint));
    }
    EXPECT_EQ(run("get 0 BufferCount --board SIM-1").exitCode, 2);
    EXPECT_EQ(journal("Brd_InitLibraries").size(), journal("Brd_FreeLibraries").size());

    json twin = test::Machine::grabber(1);
    twin["serial"] = "SIM-0";
    m_machine.boards({test::Machine::grabber(0), twin});
    noApplet(0);   // may be the one that is meant
    EXPECT_THAT(run("get BufferCount --board SIM-0:0.0").err, HasSubstr("several boards of the same text"));
}

}   // namespace
}   // namespace orvo::aikctl

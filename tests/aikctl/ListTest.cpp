#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

class List : public AikctlTest {
protected:
    // Whether the board library was let go of as often as it was taken.
    static void expectAllClosed()
    {
        const auto calls = journal("Brd_InitLibraries Brd_FreeLibraries");
        ASSERT_FALSE(calls.empty());
        EXPECT_TRUE(calls.back().starts_with("Brd_FreeLibraries"));
    }
};

TEST_F(List, ShowsEveryChannelAndWhyOneFailed)
{
    applet(0, {{"width", 32}, {"height", 16}, {"processes", {{{"dmas", 2}}}}});
    const Outcome list = run({"list"});
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_EQ(list.err, "");
    for (const char* part : {"OrvoCognexAdapter", " process: 0 dma: 1", "32 x 16", "Invalid Applet", "SIM-1",
                             "channel 2 failed: ORVO_COGNEX_APPLET_1 is not a valid environment variable."})
        EXPECT_NE(list.out.find(part), std::string::npos) << list.out << "\nlacks " << part;
    expectAllClosed();
    const auto channels = run({"--json", "list"}).json()["channels"];
    EXPECT_EQ(channels[1]["channel"], 1);
    EXPECT_EQ(channels[1]["width"], 32);
    EXPECT_EQ(channels[1]["failure"], "");
    EXPECT_EQ(channels[2]["failure"], "ORVO_COGNEX_APPLET_1 is not a valid environment variable.");
}

TEST_F(List, ClosesAChannelThatOpenedHalfWay)
{
    applet(0, {{"processes", {{{"dmas", 2}}}}});
    OrvoSim_answer("Brd_getParameter id=100", 1, -7);
    const auto channels = run({"list", "--json"}).json()["channels"];
    ASSERT_EQ(channels.size(), 3U);
    EXPECT_EQ(channels[0]["failure"], "Cannot get BRD_WIDTH");
    EXPECT_EQ(channels[1]["failure"], "");
    expectAllClosed();
}

TEST_F(List, LetsGoOfTheLibraryWhereThereIsNoBoard)
{
    noBoards();
    const Outcome list = run({"list"});
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_EQ(list.out, "no channels: the adapter found no board\n");
    expectAllClosed();
}

}   // namespace
}   // namespace orvo::aikctl

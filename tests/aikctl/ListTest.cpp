#include <regex>

#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

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

TEST_F(List, FailsAndClosesTheLibraryWhenNoChannelWorks)
{
    noApplet(0);
    m_machine.appletVariable(1, "nowhere.hap");
    const Outcome failed = run("list");
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_THAT(failed.out, HasSubstr("It is set to: nowhere.hap\n"));
    expectAllClosed(0);

    m_machine.boards({});
    const Outcome empty = run("list");
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_EQ(empty.err, "aikctl: There is no channel: the adapter found no board\n");
    expectAllClosed(0);
}

}   // namespace
}   // namespace orvo::aikctl

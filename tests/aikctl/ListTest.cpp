#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

class List : public AikctlTest {
protected:
    List() { applet(0, {{"width", 32}, {"height", 16}, {"processes", {{{"dmas", 2}}}}}); }

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
    const std::string reason = "ORVO_COGNEX_APPLET_1 is not a valid environment variable.";
    const Outcome table = run({"list"});
    EXPECT_EQ(table.exitCode, 0);
    EXPECT_EQ(table.err, "");
    expectAllClosed(1);

    const json list = runForJson({"list"});
    EXPECT_THAT(table.out, testing::StartsWith("adapter  " + list["adapter"].get<std::string>() + "\n\n"));
    EXPECT_THAT(table.out, testing::EndsWith("\nchannel 2 failed: " + reason + "\n"));
    ASSERT_EQ(list["channels"].size(), 3U);
    for (int number = 0; number < 3; ++number) {
        const json& channel = list["channels"][static_cast<size_t>(number)];
        const bool works = number < 2;
        EXPECT_EQ(channel["channel"], number);
        EXPECT_EQ(channel["width"], works ? 32 : 0);
        EXPECT_EQ(channel["height"], works ? 16 : 0);
        EXPECT_EQ(channel["failure"], works ? "" : reason);
        EXPECT_THAT(channel["board"], HasSubstr(works ? "SIM-0" : "SIM-1"));
        EXPECT_THAT(channel["name"],
                    HasSubstr(works ? " process: 0 dma: " + std::to_string(number) : ": Invalid"));

        const size_t row = table.out.find("\n" + std::to_string(number) + "  ");
        ASSERT_NE(row, std::string::npos) << table.out;
        const std::string line = table.out.substr(row + 1, table.out.find('\n', row + 1) - row - 1);
        EXPECT_THAT(line, HasSubstr(channel["name"]));
        EXPECT_THAT(line, HasSubstr(works ? "  32 x 16  " : "  failed "));
        EXPECT_THAT(line, testing::EndsWith(channel["board"]));
    }
}

TEST_F(List, ClosesAChannelThatOpenedOnlyHalfWay)
{
    OrvoSim_answer("Brd_getParameter id=100", 1, -7);
    const json channels = runForJson({"list"})["channels"];
    ASSERT_EQ(channels.size(), 3U);
    EXPECT_EQ(channels[0]["failure"], "Cannot get BRD_WIDTH");
    EXPECT_EQ(channels[1]["failure"], "");
    expectAllClosed(1);
}

TEST_F(List, ClosesTheLibraryWhenThereIsNoBoard)
{
    m_machine.boards({});
    const Outcome list = run({"list"});
    EXPECT_EQ(list.exitCode, 0);
    EXPECT_EQ(list.out, "no channels: the adapter found no board\n");
    expectAllClosed(0);
}

}   // namespace
}   // namespace orvo::aikctl

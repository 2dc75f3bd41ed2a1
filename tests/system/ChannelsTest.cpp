#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

/// Opens channel after channel: what each is called, or "failed: " and what it is called.
class ChannelList : public SystemTest {
protected:
    Lines listed()
    {
        Lines names;
        for (int32_t index = 0; host.open(index) == done(); ++index)
            names.push_back((host.record().failed ? "failed: " : "") + std::string(host.record().name));
        return names;
    }

    void grabbers(int count)
    {
        std::vector<json> boards(static_cast<size_t>(count));
        for (int board = 0; board < count; ++board)
            boards[static_cast<size_t>(board)] = Machine::grabber(board);
        machine.boards(boards);
    }

    /// The reason of the failed channel at a position.
    std::string reasonAt(int32_t index) { return host.featureName(host.opened(index), 0).text; }
};

json dmas(int count)
{
    return {{"dmas", count}};
}

TEST_F(ChannelList, NumbersBoardsProcessesAndDmasInTheirOrder)
{
    machine.boards({Machine::grabber(2, 1872), Machine::grabber(0)});
    machine.applet(0, Machine::appletOf({dmas(2), dmas(0), dmas(2)}), "camera.HAP");
    machine.applet(2, Machine::appletOf({dmas(1)}), "camera.dll");
    EXPECT_EQ(listed(), (Lines{"Orvo Gigabit 1 process: 0 dma: 0", "Orvo Gigabit 1 process: 0 dma: 1",
                               "Orvo Gigabit 1 process: 2 dma: 0", "Orvo Gigabit 1 process: 2 dma: 1",
                               "Orvo Link 1 process: 0 dma: 0"}));
}

TEST_F(ChannelList, KeepsAFailedBoardInItsPlaceBesideWorkingOnes)
{
    grabbers(2);
    machine.appletVariable(0, machine.folder().string());
    machine.applet(1, Machine::appletOf({dmas(1)}));
    const int64_t failed = host.opened(0);
    EXPECT_EQ(host.record().failed, 1);
    EXPECT_STREQ(host.record().name, "Orvo Gigabit 1: Invalid Applet ");
    EXPECT_STRNE(host.record().boardText, "");
    EXPECT_EQ(std::pair(host.record().width, host.record().height), std::pair(0, 0));

    const std::string reason = "ORVO_COGNEX_APPLET_0 does not refer to a valid file.";
    char memory = 0;
    for (const Answer& answer : {host.setup(failed, 8, 4), host.start(failed), host.stop(failed),
                                 host.read(failed, "BufferCount"), host.featureName(failed, 0)})
        EXPECT_EQ(answer, fails(reason));
    for (const Answer& answer :
         {host.getImage(failed, &memory), host.waitForIntegration(failed), host.attributes(failed)})
        EXPECT_EQ(answer, imageFails(reason));

    const int64_t good = host.opened(1);
    EXPECT_EQ(host.setup(good, 8, 4), done());
    EXPECT_EQ(host.start(good), done());
    deliver(1, 0, 1);
    EXPECT_EQ(host.waitForIntegration(good), image());
}

TEST_F(ChannelList, SaysWhatIsWrongWithTheAppletOfABoard)
{
    grabbers(6);
    machine.appletVariable(1, (machine.folder() / "missing.hap").string());
    machine.appletVariable(2, machine.file("applet.bin", "{}"));
    machine.appletVariable(3, std::string(300, 'h') + ".hap");
    machine.appletVariable(4, machine.file("bad.hap", "{ \"processes\": 7 }"));
    machine.applet(5, Machine::appletOf({dmas(0)}));
    EXPECT_EQ(reasonAt(0), "ORVO_COGNEX_APPLET_0 is not a valid environment variable.");
    EXPECT_EQ(reasonAt(1), "ORVO_COGNEX_APPLET_1 does not refer to a valid file.");
    EXPECT_EQ(reasonAt(2), "No applet loader accepts the file of ORVO_COGNEX_APPLET_2");
    EXPECT_EQ(reasonAt(3), "ORVO_COGNEX_APPLET_3 does not refer to a valid file.");
    EXPECT_THAT(reasonAt(4), testing::StartsWith("brd error code: -"));
    EXPECT_EQ(reasonAt(5), "No dma channes were found");
}

TEST_F(ChannelList, ChoosesTheLoaderByThePathAlone)
{
    grabbers(4);
    int board = 0;
    for (const char* const file : {"a.dLL", "b.hap.bak", "c.mcf", "My Haps/d.mcf"})
        machine.appletVariable(board++, machine.file(file, Machine::appletOf({dmas(1)}).dump()));
    EXPECT_THAT(listed(), testing::SizeIs(4));
    Lines loaders = journal("Brd_InitEx Brd_InitConfigEx");
    for (std::string& call : loaders)
        call.resize(call.find(' '));
    EXPECT_EQ(loaders, (Lines{"Brd_InitEx", "Brd_InitEx", "Brd_InitConfigEx", "Brd_InitEx"}));
}

TEST_F(ChannelList, AsksTheFileOfALibraryAppletForItsDmas)
{
    json applet = {{"processes", {dmas(2), dmas(1)}}, {"lacks", {3050, 3080}}};
    grabbers(4);
    int board = 0;
    for (const json& info : {json(2), json(-5), json(nullptr)}) {
        applet["info"] = info;
        machine.applet(board++, applet, "old.dll");
    }
    applet.erase("info");
    applet.update({{"lacks", {3050, 3070}}, {"file", "missing.dll"}});
    machine.applet(3, applet, "old.dll");
    EXPECT_EQ(listed(),
              (Lines{"Orvo Gigabit 1 process: 0 dma: 0", "Orvo Gigabit 1 process: 0 dma: 1",
                     "failed: Orvo Gigabit 1: Invalid Applet ", "failed: Orvo Gigabit 1: Invalid Applet ",
                     "failed: Orvo Gigabit 1: Invalid Applet "}));
    for (const int64_t failed : {3, 5})
        EXPECT_EQ(host.featureName(failed, 0), fails("No dma channes were found"));
    EXPECT_THAT(journal("Brd_getParameterWithType"),
                testing::Contains("Brd_getParameterWithType board=0 id=3050 dma=1 type=1 -> -2070"));
}

TEST_F(ChannelList, FailsABoardWhoseProcessesCannotBeCounted)
{
    grabbers(3);
    for (int board = 0; board < 3; ++board)
        machine.applet(board, Machine::appletOf({dmas(1), dmas(1)}));
    OrvoSim_answer("Brd_getParameterWithType board=0 id=3070", 1, -40);
    OrvoSim_answer("Brd_getParameterWithType board=1 id=3070", 1, 0);   // and the word stays as it was
    OrvoSim_answer("Brd_getParameterWithType board=2 id=3050 dma=0", 1, -41);
    EXPECT_EQ(reasonAt(0), "brd error code: -40");
    EXPECT_EQ(reasonAt(1), "brd error code: 0");
    EXPECT_EQ(host.open(2), done());   // one process of two is lost, and the positions close up
    EXPECT_STREQ(host.record().name, "Orvo Gigabit 1 process: 0 dma: 0");
    EXPECT_THAT(journal("Brd_FreeGrabber"), testing::SizeIs(2));   // nothing of a failed board stays open
}

TEST_F(ChannelList, TakesAbsurdCountsForNone)
{
    const uint32_t tooMany = 65'536;
    const uint32_t negative = 0x8000'0000;
    grabbers(3);
    for (const int board : {0, 1})
        machine.applet(board, Machine::appletOf({dmas(1)}));
    machine.applet(2, {{"processes", {dmas(1)}}, {"lacks", {3050}}, {"info", 65536}}, "old.dll");
    OrvoSim_answerWith("Brd_getParameterWithType board=0 id=3070", 0, 0, &negative, sizeof negative);
    OrvoSim_answerWith("Brd_getParameterWithType board=1 id=3050", 0, 0, &tooMany, sizeof tooMany);
    for (int32_t index = 0; index < 3; ++index) {
        EXPECT_EQ(host.start(host.opened(index)), fails("No dma channes were found"));
        EXPECT_EQ(host.record().failed, 1);
    }
    EXPECT_THAT(journal("Brd_getParameter"), testing::Not(testing::Contains(testing::HasSubstr("id=3080"))));
}

TEST_F(ChannelList, LosesTheDmaThatHasNoNumberAndClosesUp)
{
    machine.boards({Machine::grabber(0)});
    machine.applet(0, Machine::appletOf({Machine::process({Machine::dma(4), Machine::dma(7)})}));
    const int32_t none = -1;
    OrvoSim_answerWith("Brd_getParameter id=3080", 1, -42, &none, sizeof none);
    EXPECT_EQ(listed(), Lines{"Orvo Gigabit 1 process: 0 dma: 0"});
    EXPECT_THAT(journal("Brd_getParameter"), testing::Contains(testing::HasSubstr("id=100 dma=7")));
}

TEST_F(ChannelList, FailsABoardThatVanishesWhileItIsOpened)
{
    machine.boards({Machine::grabber(0)});
    machine.applet(0, Machine::appletOf({dmas(1)}));
    OrvoSim_answer("Brd_getBoardType boardIndex=0", 2, -1);   // the second and the third time it is asked
    OrvoSim_answer("Brd_getBoardType boardIndex=0", 3, -1);
    ASSERT_EQ(host.open(0), done());
    EXPECT_STREQ(host.record().name, "Invalid Board 2897");
    EXPECT_STREQ(host.record().boardText, "");   // the board itself has gone
    EXPECT_EQ(host.start(host.record().channelID), fails("Cannot detect board type"));
}

TEST_F(ChannelList, StaysEmptyUntilAFailingRelease)
{
    machine.boards({});
    EXPECT_EQ(host.open(0), fails("index is not valid"));
    EXPECT_EQ(host.release(0), fails("Invalid channelID"));
    EXPECT_THAT(journal("Brd_InitLibraries Brd_FreeLibraries"), testing::SizeIs(4));
    machine.oneBoard(dmas(1));
    EXPECT_EQ(host.start(1), fails("Invalid channelID"));   // makes an empty list, as it comes first
    EXPECT_EQ(host.open(0), fails("index is not valid"));
    EXPECT_EQ(host.release(1), fails("Invalid channelID"));
    EXPECT_EQ(host.open(0), done());
}

TEST_F(ChannelList, BringsAReleasedChannelBackAndBeginsAnewAfterTheLastRelease)
{
    machine.oneBoard(dmas(2));
    const int64_t first = host.opened(0);
    const int64_t second = host.opened(1);
    EXPECT_EQ(host.open(1), fails("Handle already exists"));
    EXPECT_EQ(host.record().channelID, second);
    EXPECT_EQ(host.open(-1), fails("index is not valid"));
    ASSERT_EQ(host.write(first, "BufferCount", "3"), done());
    ASSERT_EQ(host.release(first), done());
    EXPECT_EQ(host.read(first, "BufferCount"), fails("Invalid channelID"));
    EXPECT_EQ(host.opened(0), first);
    EXPECT_EQ(host.read(first, "BufferCount"), gives("3"));   // the same channel: nothing was rebuilt
    EXPECT_THAT(journal("Brd_InitEx"), testing::SizeIs(1));

    EXPECT_EQ(host.release(4711), fails("Invalid channelID"));
    ASSERT_EQ(host.release(second), done());
    ASSERT_EQ(host.release(first), done());
    EXPECT_EQ(host.opened(0), 1);
    EXPECT_EQ(host.read(1, "BufferCount"), gives("5"));
    EXPECT_THAT(journal("Brd_InitEx"), testing::SizeIs(2));
}

TEST_F(ChannelList, OpensListsAndClosesAHundredAndTwentyEightChannels)
{
    grabbers(8);
    for (int board = 0; board < 8; ++board)
        machine.applet(board, Machine::appletOf({dmas(4), dmas(4), dmas(4), dmas(4)}));
    EXPECT_THAT(listed(), testing::SizeIs(128));
    EXPECT_EQ(host.record().channelID, 0);   // nothing is stored for the position after the last
    for (int64_t id = 1; id <= 128; ++id)
        ASSERT_EQ(host.release(id), done());
    EXPECT_THAT(journal("Brd_FreeGrabber"), testing::SizeIs(8));
}

}   // namespace

}   // namespace orvo::test

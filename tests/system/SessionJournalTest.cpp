#include "tests/system/CameraTest.h"
#include "tests/system/Transcript.h"

namespace orvo::test {

namespace {

/// One board with one process of two DMAs, numbered 3 and 4 at the board, 8 x 4 pixels of 8-bit grey.
class SessionJournal : public SystemTest {
protected:
    SessionJournal() { machine.oneBoard(Machine::process({Machine::dma(3), Machine::dma(4)})); }

    /// What the step made the adapter call, with a plain name in the place of the applet's path.
    void saw(const std::string& title)
    {
        Lines calls = takeJournal();
        const std::string applet = (machine.folder() / "board0-applet.hap").string();
        for (std::string& call : calls)
            if (const auto place = call.find(applet); place != std::string::npos)
                call.replace(place, applet.size(), "applet.hap");
        transcript.add(title, calls);
    }

    Transcript transcript;
};

TEST_F(SessionJournal, HoldsTheseBoardCallsAndNoOthers)
{
    const int64_t id = host.opened(0);
    saw("GetVideoChannel");
    EXPECT_EQ(host.setup(id, 8, 4, 2, 1), done());
    saw("SetupCommonParams");
    EXPECT_EQ(host.start(id), done());
    saw("StartAcquisition");
    deliver(1, 3);
    saw("a picture comes");
    EXPECT_EQ(host.waitForIntegration(id), image());
    saw("WaitForIntegration");
    EXPECT_EQ(host.attributes(id), image());
    saw("GetImageAttributes");
    host.fetch(id, 32);
    saw("GetImage");
    EXPECT_EQ(host.stop(id), done());
    saw("StopAcquisition");
    EXPECT_EQ(host.release(id), done());
    saw("ReleaseVideoChannel");
    EXPECT_EQ(host.opened(0), id);   // the numbers begin anew
    saw("GetVideoChannel");
    EXPECT_EQ(host.start(id), fails("Acquisistion is not setup"));
    saw("StartAcquisition without a ring");
    EXPECT_EQ(host.release(id), done());
    saw("ReleaseVideoChannel without a ring");
    EXPECT_TRUE(transcript.isThatOf("session-journal"));
}

TEST_F(SessionJournal, OfAReleaseWhileRunningBeginsWithTheStopOfEveryPort)
{
    const int64_t id = host.opened(0);
    ASSERT_EQ(host.setup(id, 8, 4), done());
    ASSERT_EQ(host.start(id), done());
    OrvoSim_answer("Brd_stopAcquireEx dma=4", 1, -50);   // the others still stop, and this one is tried again
    OrvoSim_clearJournal();
    EXPECT_EQ(host.release(id), done());
    saw("ReleaseVideoChannel");
    EXPECT_TRUE(transcript.isThatOf("release-while-running"));
}

TEST_F(SessionJournal, OfAReleaseWithCamerasClosesThemBetweenTheStopAndTheBoards)
{
    std::vector<json> boards = {Machine::grabber(0, kGigEVision.boardType),
                                Machine::grabber(1, kGenICam.boardType)};
    for (json& board : boards) {
        board["cameras"] = {{{"port", 0}}};
        machine.applet(board["index"], Machine::appletOf({Machine::process({Machine::dma()})}));
    }
    machine.boards(boards);
    const int64_t channels[] = {host.opened(0), host.opened(1)};
    for (const int64_t channel : channels) {
        ASSERT_EQ(host.setup(channel, 8, 4), done());
        ASSERT_EQ(host.execute(channel, "InitializeCameraConnector"), done());
        ASSERT_EQ(host.execute(channel, "Detect"), done());
        ASSERT_EQ(host.start(channel), done());
        ASSERT_EQ(host.execute(channel, "StartAcquisition"), done());
    }
    ASSERT_EQ(host.release(channels[0]), done());
    OrvoSim_clearJournal();
    ASSERT_EQ(host.release(channels[1]), done());
    saw("the last ReleaseVideoChannel");
    EXPECT_TRUE(transcript.isThatOf("release-with-cameras"));
}

}   // namespace

}   // namespace orvo::test

#include "tests/system/CameraTest.h"
#include "tests/system/DispatcherControl.h"
#include "tests/system/Transcript.h"

namespace orvo::test {

namespace {

/// One board with one channel, of the DMA 3, and the dispatcher listening from the first call on.
class LogRecords : public SystemTest {
protected:
    LogRecords() { machine.oneBoard(Machine::process({Machine::dma(3)})); }

    void saw(const std::string& title) { transcript.add(title, dispatcher.take()); }

    DispatcherControl dispatcher;
    Transcript transcript;
};

TEST_F(LogRecords, TellAWholeSession)
{
    const int64_t id = host.opened(0);
    saw("open");
    OrvoSim_answer("Brd_setParameter id=300", 1, -7);
    EXPECT_EQ(host.setup(id, 8, 4, 9, 9), done());
    saw("set up, and the x offset is refused");
    OrvoSim_answer("Brd_setParameter id=400", 1, -7);
    EXPECT_EQ(host.setup(id, 8, 4, 0, 1), done());
    saw("set up, and the y offset is refused");
    EXPECT_EQ(host.write(id, "AcquisitionStrategy", "OldestFirst"), done());
    saw("write an enumeration");
    EXPECT_EQ(host.read(id, "AcquisitionStrategy"), gives("OldestFirst"));
    saw("read an enumeration");
    EXPECT_EQ(Host::call(ExecuteCommand, id, nullptr), fails("Feature name is an invalid ptr"));
    EXPECT_EQ(StartAcquisition(nullptr, id), AIK_FAILED);
    saw("execute no feature, then start without errstr");
    OrvoSim_answer("Brd_AcquireEx", 1, -7);
    EXPECT_EQ(host.start(id), fails("brd error code: -7"));
    EXPECT_EQ(OrvoSim_callBack(0, 3, 1), 0);
    saw("start, and the board refuses; a picture comes all the same");
    EXPECT_EQ(host.start(id), done());
    saw("start");
    EXPECT_EQ(host.waitForIntegration(id), pending());
    saw("wait for no picture");
    deliver(1, 3);
    saw("a picture comes");
    OrvoSim_answer("Brd_getStatusEx code=40", 1, 11);
    OrvoSim_answer("Brd_getStatusEx code=40", 2, 22);
    host.fetch(id, 32);
    saw("fetch it");
    OrvoSim_answer("Brd_getImagePtrEx", 1, 0);
    deliver(1, 3);
    saw("a picture of an unknown buffer comes");
    EXPECT_EQ(host.stop(id), done());
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
    saw("stop, twice");
    EXPECT_EQ(host.release(id), done());
    saw("release");
    EXPECT_EQ(host.start(id), fails("Invalid channelID"));
    saw("start when everything is down");
    EXPECT_EQ(host.release(id), fails("Invalid channelID"));
    dispatcher.take();
    machine.appletVariable(0, "");
    host.opened(0);
    saw("open a failed board");
    EXPECT_TRUE(transcript.isThatOf("session-log"));
}

TEST_F(LogRecords, FollowTheDispatchersLevels)
{
    const int64_t id = host.opened(0);
    const auto recordsAt = [&](int32_t level) {
        OrvoSimLog_setLevel("orvo.Cognex.Interface", level);
        dispatcher.take();
        EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
        return dispatcher.take().size();
    };
    EXPECT_EQ(recordsAt(1), 3u);
    EXPECT_EQ(recordsAt(5), 1u);   // the failure alone
    EXPECT_EQ(recordsAt(6), 0u);
    OrvoSimLog_setLevel("orvo.Cognex.Interface", 1);
    OrvoSimLog_goAway();
    EXPECT_EQ(recordsAt(1), 0u);
}

class ConnectorRecords : public EitherFamily {
protected:
    DispatcherControl dispatcher;
};
ORVO_FOR_BOTH_FAMILIES(ConnectorRecords);

TEST_P(ConnectorRecords, TellTheStatesFromTheReachedOneDown)
{
    Transcript transcript;
    const auto saw = [&](const std::string& title, const Answer& answer) {
        EXPECT_EQ(answer, done());
        Lines records = dispatcher.take();
        std::erase_if(records, [](const auto& record) { return record.find("Interface") != record.npos; });
        transcript.add(title, records);
    };
    openBoard(GetParam());
    connect();
    dispatcher.take();
    saw("PortIndex = 1", write("PortIndex", "1"));
    saw("CameraIndex = 1", write("CameraIndex", "1"));
    saw("PortIndex = -1", write("PortIndex", "-1"));
    saw("CloseCameraConnector", execute("CloseCameraConnector"));
    EXPECT_TRUE(transcript.isThatOf("connector-states"));
}

}   // namespace

}   // namespace orvo::test

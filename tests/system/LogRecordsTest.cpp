#include "tests/system/CameraTest.h"
#include "tests/system/DispatcherControl.h"

namespace orvo::test {

namespace {

std::string interfaceTrace(const std::string& message)
{
    return "1 orvo.Cognex.Interface source-file=OrvoCognexAdapter,source-line=N,thread-id=T|" + message;
}

std::string interfaceCaught(const std::string& message)
{
    return "5 orvo.Cognex.Interface thread-id=T|" + message;
}

std::string portTrace(const std::string& line, const std::string& message)
{
    return "1 orvo.Cognex.DmaPort source-file=brdlib/DmaPort,source-line=" + line + ",thread-id=T|" + message;
}

std::string connectorTrace(const std::string& message)
{
    return "1 orvo.Cognex.CameraConnector source-file=camera/CameraConnector,source-line=N,thread-id=T|" +
           message;
}

/// As OneChannel, with the dispatcher listening from the first call on.
class LogRecords : public SystemTest {
protected:
    LogRecords() { machine.oneBoard(Machine::process({Machine::dma(3)})); }

    DispatcherWheel dispatcher;
};

TEST_F(LogRecords, TellAWholeLife)
{
    const int64_t id = host.opened(0);
    EXPECT_EQ(dispatcher.take(),
              (Lines{interfaceTrace("Enter GetVideoChannel"), connectorTrace("Connector update state : 1"),
                     interfaceTrace("Leave GetVideoChannel: 0")}));

    OrvoSim_answer("Brd_setParameter id=300", 1, -7);
    ASSERT_EQ(host.setup(id, 8, 4, 9, 9), done());
    EXPECT_EQ(dispatcher.take(),
              (Lines{interfaceTrace("Enter SetupCommonParams"),
                     "4 orvo.Cognex.Interface thread-id=T|Cannot set image offset: Cannot set BRD_XOFFSET",
                     interfaceTrace("Leave SetupCommonParams: 0")}));
    OrvoSim_answer("Brd_setParameter id=400", 1, -7);
    ASSERT_EQ(host.setup(id, 8, 4, 0, 1), done());
    EXPECT_EQ(dispatcher.take().at(1),
              "4 orvo.Cognex.Interface thread-id=T|Cannot set image offset: Cannot set BRD_YOFFSET");

    ASSERT_EQ(host.write(id, "AcquisitionStrategy", "OldestFirst"), done());
    const std::string step =
        "1 orvo.Cognex.Feature source-file=features/EnumerationFeature,source-line=N,thread-id=T|";
    EXPECT_EQ(dispatcher.take(), (Lines{interfaceTrace("Enter WriteValue"), step + "WriteEnum start",
                                        step + "WriteEnum End", interfaceTrace("Leave WriteValue: 0")}));
    ASSERT_EQ(host.read(id, "AcquisitionStrategy"), gives("OldestFirst"));
    EXPECT_EQ(dispatcher.take(), (Lines{interfaceTrace("Enter ReadValue"), step + "ReadEnum start",
                                        step + "ReadEnum End", interfaceTrace("Leave ReadValue: 0")}));

    ASSERT_EQ(host.start(id), done());
    EXPECT_EQ(dispatcher.take(),
              (Lines{interfaceTrace("Enter StartAcquisition"), portTrace("191", "start dma(3)"),
                     interfaceTrace("Leave StartAcquisition: 0")}));

    ASSERT_EQ(host.waitForIntegration(id), pending());
    EXPECT_EQ(
        dispatcher.take(),
        (Lines{interfaceTrace("Enter WaitForIntegration"),
               interfaceCaught("WaitForIntegration panding: No image arrived within the given timeout."),
               interfaceTrace("Leave WaitForIntegration: 0")}));

    deliver(1, 3);
    EXPECT_EQ(dispatcher.take(), Lines{portTrace("338", "newBuffer dma(3):0")});

    int64_t status = 11;
    OrvoSim_answerWith("Brd_getStatusEx code=40", 1, status, nullptr, 0);
    status = 22;
    OrvoSim_answerWith("Brd_getStatusEx code=40", 2, status, nullptr, 0);
    host.fetch(id, 32);
    EXPECT_EQ(dispatcher.take(),
              (Lines{interfaceTrace("Enter GetImage"), portTrace("357", "unblockBuffer dma(3):0 _11-22"),
                     interfaceTrace("Leave GetImage: 0")}));

    OrvoSim_answer("Brd_getImagePtrEx", 1, 0);
    deliver(1, 3);
    EXPECT_EQ(
        dispatcher.take(),
        Lines{
            "5 orvo.Cognex.DmaPort thread-id=T|Error in acquisition callback Picture of an unknown buffer"});

    ASSERT_EQ(host.stop(id), done());
    ASSERT_EQ(host.stop(id), fails("Acquisition is not running"));
    EXPECT_EQ(dispatcher.take(),
              (Lines{interfaceTrace("Enter StopAcquisition"), interfaceTrace("Leave StopAcquisition: 0"),
                     interfaceTrace("Enter StopAcquisition"),
                     interfaceCaught("StopAcquisition exception: Acquisition is not running"),
                     interfaceTrace("Leave StopAcquisition: 1")}));

    ASSERT_EQ(host.release(id), done());
    EXPECT_EQ(dispatcher.take(), (Lines{interfaceTrace("Enter ReleaseVideoChannel"),
                                        interfaceTrace("Leave ReleaseVideoChannel: 0")}));
    EXPECT_EQ(host.start(id), fails("Invalid channelID"));   // everything is down: no logger, no record
    EXPECT_EQ(dispatcher.take(), Lines());
    EXPECT_EQ(host.release(id), fails("Invalid channelID"));
}

TEST_F(LogRecords, TellOfAPictureThatCameWithoutAcquisition)
{
    const int64_t id = host.opened(0);
    ASSERT_EQ(host.setup(id, 8, 4), done());
    OrvoSim_answer("Brd_AcquireEx", 1, -7);
    ASSERT_EQ(host.start(id), fails("brd error code: -7"));
    dispatcher.take();
    EXPECT_EQ(OrvoSim_callBack(0, 3, 1), 0);
    EXPECT_EQ(dispatcher.take(),
              Lines{"5 orvo.Cognex.DmaPort thread-id=T|Picture received despite no acquisition running"});
}

TEST_F(LogRecords, TellOfAFailedBoard)
{
    machine.appletVariable(0, "");
    host.opened(0);
    EXPECT_THAT(
        dispatcher.take(),
        testing::Contains("5 orvo.Cognex.BoardContainer thread-id=T|ORVO_COGNEX_APPLET_0 is not a valid "
                          "environment variable."));
}

TEST_F(LogRecords, TellOfACallWithoutErrstr)
{
    host.opened(0);
    dispatcher.take();
    EXPECT_EQ(adapter.startAcquisition(nullptr, 1), AIK_FAILED);
    EXPECT_THAT(dispatcher.take(), testing::Contains(interfaceCaught(
                                       "StartAcquisition exception: errstr is an invalid pointer.")));
}

TEST_F(LogRecords, FollowTheDispatchersLevels)
{
    const int64_t id = host.opened(0);
    dispatcher.setLevel("orvo.Cognex.Interface", 5);
    dispatcher.take();
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
    EXPECT_EQ(dispatcher.take(),
              Lines{interfaceCaught("StopAcquisition exception: Acquisition is not running")});
    dispatcher.setLevel("orvo.Cognex.Interface", 6);
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
    EXPECT_EQ(dispatcher.take(), Lines());
    dispatcher.setLevel("orvo.Cognex.Interface", 1);
    dispatcher.goAway();
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
    EXPECT_EQ(dispatcher.take(), Lines());
}

/// Of the connector alone, without what all of them begin with.
class ConnectorRecords : public EitherFamily {
protected:
    ConnectorRecords()
    {
        openBoard(GetParam());
        connect();
        take();
    }

    Lines take()
    {
        const std::string begin = connectorTrace("Connector ");
        Lines records = dispatcher.take();
        std::erase_if(records, [&](const std::string& record) { return !record.starts_with(begin); });
        for (std::string& record : records)
            record.erase(0, begin.size());
        return records;
    }

    DispatcherWheel dispatcher;
};
ORVO_FOR_BOTH_FAMILIES(ConnectorRecords);

TEST_P(ConnectorRecords, TellTheStatesFromTheReachedOneDown)
{
    ASSERT_EQ(write("PortIndex", "1"), done());
    EXPECT_EQ(take(), (Lines{"State (found ports): 2", "State (found cameras): 1", "update state : 7",
                             "update state : 4", "update state : 5", "update state : 2", "update state : 3",
                             "update state : 0", "update state : 1"}));
    ASSERT_EQ(write("CameraIndex", "1"), done());
    EXPECT_EQ(take(),
              (Lines{"State (found ports): 2", "State (found cameras): 1", "update state : 5",
                     "update state : 2", "update state : 3", "update state : 0", "update state : 1"}));
    ASSERT_EQ(write("PortIndex", "-1"), done());
    EXPECT_EQ(take(),
              (Lines{"State (found ports): 2", "update state : 3", "update state : 0", "update state : 1"}));
    ASSERT_EQ(execute("CloseCameraConnector"), done());
    EXPECT_EQ(take(), Lines{"update state : 1"});
}

}   // namespace

}   // namespace orvo::test

#include "tests/system/CameraTest.h"
#include "tests/system/DispatcherControl.h"
#include "tests/system/Transcript.h"

namespace orvo::test {

namespace {

/// One board with one process of two DMAs, numbered 3 and 4 at the board, 8 x 4 pixels of 8-bit grey.
class SessionJournal : public CameraTest {
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
    id = host.opened(0);
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
    id = host.opened(0);
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
    describeBothFamilies(cameraAt(0), {Machine::dma()});
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

const Lines kFeatures[] = {
    {"PortIndex", "PortCount"},
    {"CameraCount", "CameraIndex"},
    {"CameraName", "CameraFeatureKey", "CameraStringValue", "CameraIntValue", "CameraFloatValue",
     "CameraBooleanValue", "CameraEnumerationValue", "CameraCommand"},
    {"EthActionCommand_DeviceKeyLocal", "EthActionCommand_GroupKeyLocal", "EthActionCommand_GroupMaskLocal",
     "EthActionCommand_Send", "EthActionCommand_DeviceKeyRemote", "EthActionCommand_GroupKeyRemote",
     "EthActionCommand_GroupMaskRemote", "EthActionCommand_GroupIndexRemote",
     "EthActionCommand_ApplyGroupRemote"},
};

// The commands that a state refuses.
const Lines kClosed = {"CloseCameraConnector", "Detect", "StartAcquisition", "StopAcquisition"};
const Lines kNoCamera = {"InitializeCameraConnector", "StartAcquisition", "StopAcquisition"};
const Lines kConnected = {"InitializeCameraConnector"};

/// One channel works with the cameras; the other one, of the same board, is looked at.
class CameraSession : public EitherFamily {
protected:
    /// Adds what the step called, and what its state offers and refuses.
    void saw(const std::string& title, const Answer& answer, const Lines& refused)
    {
        EXPECT_EQ(answer, done()) << title;
        Lines lines = takeJournal(kCameraCalls);
        for (const Lines& group : kFeatures)
            if (const std::string names = offered(group); !names.empty())
                lines.push_back("offers" + names);
        lines.emplace_back("refuses");
        for (const std::string& command : refused)
            if (execute(command.c_str()) == cannotExecute(kNotAvailable))
                lines.back() += " " + command;
        transcript.add(title, lines);
        OrvoSim_clearJournal();
    }
    void command(const char* name, const Lines& refused) { saw(name, execute(name), refused); }
    void choose(const char* feature, const char* value, const Lines& refused)
    {
        saw(std::string(feature) + " = " + value, write(feature, value), refused);
    }

    Transcript transcript;

private:
    /// Those of the features that are available, with the values that can be read. One that can only be written
    /// is asked by a write that is refused either way.
    std::string offered(const Lines& features)
    {
        std::string names;
        for (const std::string& name : features) {
            Answer answer = host.read(neighbour, name.c_str());
            if (answer == cannotRead("Feature is not readable."))
                answer = host.write(neighbour, name.c_str(), "");
            if (answer.code == AIK_OK)
                names += " " + name + "=" + answer.text;
            else if (answer != cannotRead(kNotAvailable) && answer != cannotWrite(kNotAvailable) &&
                     answer != fails("Cannot find feature with the name: " + name))
                names += " " + name;
        }
        return names;
    }
};
ORVO_FOR_BOTH_FAMILIES(CameraSession);

TEST_P(CameraSession, CallsAndOffersThis)
{
    openBoard(GetParam());
    saw("open two channels", done(), kClosed);
    command("InitializeCameraConnector", kNoCamera);
    if (isGigE()) {   // its ports are known before the search
        choose("PortIndex", "2", kNoCamera);
        choose("PortIndex", "0", kNoCamera);
    }
    command("Detect", kConnected);
    choose("PortIndex", "2", kNoCamera);
    choose("PortIndex", "-1", kNoCamera);
    choose("PortIndex", "1", kConnected);
    choose("CameraIndex", "1", kNoCamera);
    choose("CameraIndex", "0", kConnected);
    command("StartAcquisition", kConnected);
    command("StopAcquisition", kConnected);
    command("Detect", kConnected);
    command("CloseCameraConnector", kClosed);
    command("InitializeCameraConnector", kNoCamera);
    command("Detect", kConnected);

    EXPECT_EQ(host.release(neighbour), done());
    transcript.add("release one of them", takeJournal());
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
    OrvoSim_clearJournal();
    EXPECT_EQ(host.release(id), done());
    transcript.add("release the other", takeJournal(kCameraCalls));
    id = host.opened(0);
    neighbour = host.opened(1);
    saw("open two channels", done(), kClosed);
    EXPECT_TRUE(transcript.isThatOf(std::string("camera-session-") + GetParam().name));
}

}   // namespace

}   // namespace orvo::test

#include <array>
#include <tuple>

#include "tests/system/CameraTest.h"
#include "tests/system/DispatcherControl.h"
#include "tests/system/Transcript.h"

namespace orvo::test {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

const char* const kNoSuchKey = "Selected port is not available.";

using CameraPorts = EitherFamily;
ORVO_FOR_BOTH_FAMILIES(CameraPorts);

TEST_P(CameraPorts, StayClosedWithoutTheirLibrary)
{
    openBoard(GetParam());
    OrvoSim_answer(call("openBoard").c_str(), 1, -3);
    EXPECT_EQ(execute("InitializeCameraConnector"), cannotExecute(libraryError(-3)));
    EXPECT_EQ(execute("CloseCameraConnector"), cannotExecute(kNotAvailable));
    connect();
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
}

TEST_P(CameraPorts, LoseACameraThatVanishesAndFindItAgain)
{
    openBoard(GetParam(), {0});
    connect();
    OrvoSim_answer(call("getCameraInfo").c_str(), 1, 0);   // and no record
    EXPECT_EQ(write("PortIndex", "0"), done());
    EXPECT_EQ(read("CameraName"), gives(""));
    OrvoSim_vanishCamera(0, 0, 0);
    EXPECT_EQ(read("CameraIntValue", "Width").code, AIK_FAILED);
    execute("Detect");   // which fails while an old connection refuses to end
    EXPECT_EQ(execute("Detect"), done());
    EXPECT_EQ(read("CameraCount"), isGigE() ? gives("0") : cannotRead(kNotAvailable));
    OrvoSim_restoreCamera(0, 0);
    EXPECT_EQ(execute("Detect"), done());
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
}

TEST_P(CameraPorts, AreNoneAtAnAbsurdCount)
{
    openBoard(GetParam());
    for (const int32_t count : {65'536, -1}) {
        OrvoSim_answerWith("Brd_getParameterWithType id=3060", 1, 0, &count, sizeof count);
        OrvoSim_answer("Ogc_getFoundCount", 1, count);
        EXPECT_EQ(execute("InitializeCameraConnector"), done());
        EXPECT_EQ(execute("Detect"), done());
        EXPECT_EQ(read("PortCount"), cannotRead(kNotAvailable));
        EXPECT_THAT(takeJournal("Brd_getParameter id=3090"), testing::IsEmpty());
        EXPECT_THAT(takeJournal("Ogc_getCameraOnPort"), testing::IsEmpty());
        EXPECT_EQ(execute("CloseCameraConnector"), done());
        OrvoSim_clearScript();
    }
}

using GigEPorts = CameraTest;

TEST_F(GigEPorts, AreSearchedUpToTheFirstGapInTheirNumbers)
{
    openBoard(kGigEVision, {0, 2}, {0, 2});
    ASSERT_EQ(execute("InitializeCameraConnector"), done());
    EXPECT_EQ(read("PortCount"), gives("2"));
    OrvoSim_clearJournal();
    EXPECT_EQ(execute("Detect"), fails("invalid unordered_map<K, T> key"));
    EXPECT_THAT(takeJournal("Eth_connectCamera"), ElementsAre("Eth_connectCamera camera=c1 -> 0"));
    EXPECT_EQ(read("CameraName"), cannotRead(kNotAvailable));   // found, but nobody has looked at the states
    EXPECT_EQ(write("PortIndex", "0"), done());
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));

    EXPECT_EQ(write("PortIndex", "1"), cannotWrite(kNoSuchKey));
    EXPECT_EQ(read("PortIndex"), gives("1"));
    EXPECT_EQ(execute("StartAcquisition"),
              cannotExecute("Cannot stop aquisition: camera port index (1) is invalid"));
    EXPECT_EQ(execute("StopAcquisition"),
              cannotExecute("Cannot start aquisition: camera port index (1) is invalid"));
    EXPECT_EQ(write("PortIndex", "2"), done());   // not below their count, so out of reach
    EXPECT_EQ(read("CameraCount"), cannotRead(kNotAvailable));
}

TEST_F(GigEPorts, KeepTheLibraryOpenWithoutAFirstPort)
{
    openBoard(kGigEVision, {2, 3}, {2, 3});
    EXPECT_EQ(execute("InitializeCameraConnector"), cannotExecute(kNoSuchKey));
    EXPECT_EQ(takeJournal(kCameraCalls), Lines{"Eth_openBoard boardIndex=0 zero=0 -> 0 library=0"});
    EXPECT_EQ(execute("Detect"), cannotExecute(kNotAvailable));
    EXPECT_EQ(execute("CloseCameraConnector"), cannotExecute(kNotAvailable));
    EXPECT_EQ(execute("InitializeCameraConnector"), done());
    ASSERT_EQ(host.release(id), done());
    EXPECT_EQ(takeJournal(kCameraCalls), Lines());
    ASSERT_EQ(host.release(neighbour), done());
    EXPECT_EQ(takeJournal(kCameraCalls), Lines{"Eth_closeBoard library=0 -> 0"});
}

TEST_F(GigEPorts, AreThoseThatTheAppletTells)
{
    openBoard(kGigEVision, {0, 1});
    OrvoSim_answer("Brd_getParameter id=3090 value=1", 1, -42);
    connect();
    EXPECT_EQ(read("PortCount"), gives("1"));
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
    ASSERT_EQ(execute("CloseCameraConnector"), done());
    OrvoSim_answer("Brd_getParameterWithType id=3060", 1, -42);
    EXPECT_EQ(execute("InitializeCameraConnector"), fails("Cannot get the number of cam ports"));
    EXPECT_EQ(execute("Detect"), cannotExecute(kNotAvailable));
}

TEST_F(GigEPorts, ConnectTheFirstOfTheirCamerasOnly)
{
    openBoard(kGigEVision, {1});
    OrvoSim_answer("Eth_getCameraCount port=1", 1, 2);
    ASSERT_EQ(execute("InitializeCameraConnector"), done());
    ASSERT_EQ(execute("Detect"), done());
    EXPECT_THAT(takeJournal("Eth_getCameraByIndex"),
                ElementsAre("Eth_getCameraByIndex library=0 port=1 index=0 -> 0 camera=c1"));
    EXPECT_EQ(read("CameraCount"), gives("0"));
    EXPECT_EQ(write("PortIndex", "1"), done());
    EXPECT_EQ(read("CameraCount"), gives("1"));
}

TEST_F(GigEPorts, EndTheirSearchWithTheFirstFailureAndSayWhy)
{
    openBoard(kGigEVision);
    ASSERT_EQ(execute("InitializeCameraConnector"), done());
    OrvoSim_answerWith("Eth_getErrorDescription", 0, 0, "why", 4);
    const std::tuple<const char*, Answer, const char*> rows[] = {
        {"Eth_scanPorts", cannotExecute("eth error code: -9"), "Eth_scanPorts"},
        {"Eth_getCameraCount", fails("Eth_getCameraCount failed: why"), "Eth_getErrorDescription"},
        {"Eth_getCameraByIndex", fails("Eth_getCameraByIndex failed: why"), "Eth_getErrorDescription"},
        {"Eth_connectCamera", cannotExecute("eth error code: -9"), "Eth_releaseCamera camera=c1 -> 0"},
    };
    for (const auto& [call, answer, last] : rows) {
        SCOPED_TRACE(call);
        OrvoSim_answer(call, 1, -9);
        OrvoSim_clearJournal();
        EXPECT_EQ(execute("Detect"), answer);
        const Lines calls = takeJournal(kCameraCalls);
        EXPECT_THAT(calls.back(), StartsWith(last));
        EXPECT_THAT(calls, Not(Contains(HasSubstr("port=1"))));
        EXPECT_EQ(write("PortIndex", "0"), done());
        EXPECT_EQ(read("CameraCount"), gives("0"));
    }
    EXPECT_EQ(execute("Detect"), done());
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
    OrvoSim_answer("Eth_startAcquisition", 1, -9);
    EXPECT_EQ(execute("StartAcquisition"), fails("Eth_startAcquisition failed: why"));
    OrvoSim_answer("Eth_stopAcquisition", 1, -9);
    EXPECT_EQ(execute("StopAcquisition"), fails("Eth_stopAcquisition failed: why"));
}

TEST_F(GigEPorts, LoseTheCamerasThatRefuseToDisconnect)
{
    Transcript transcript;
    const auto saw = [&](const char* title) { transcript.add(title, takeJournal(kCameraCalls)); };
    openBoard(kGigEVision);
    connect();
    OrvoSim_answer("Eth_disconnectCamera camera=c1", 1, -9);
    EXPECT_EQ(execute("Detect"), cannotExecute("eth error code: -9"));
    EXPECT_EQ(read("CameraIntValue"), cannotRead("No camera is connected"));
    EXPECT_EQ(execute("StartAcquisition"), cannotExecute("No camera is connected"));
    saw("Detect, while the first camera refuses");
    EXPECT_EQ(execute("Detect"), done());
    saw("Detect again");
    OrvoSim_answer("Eth_disconnectCamera camera=c3", 1, -9);
    OrvoSim_answer("Eth_disconnectCamera camera=c4", 1, -10);
    EXPECT_EQ(execute("CloseCameraConnector"), cannotExecute("eth error code: -9"));
    saw("CloseCameraConnector, while both refuse");
    connect();
    OrvoSim_answer("Eth_disconnectCamera", 0, -9);
    ASSERT_EQ(host.release(id), done());
    ASSERT_EQ(host.release(neighbour), done());
    saw("the last ReleaseVideoChannel, while both refuse");
    EXPECT_TRUE(transcript.isThatOf("cameras-that-refuse"));
}

/// What the search of this family tolerates is told by the records alone.
class GenICamPorts : public CameraTest {
protected:
    Answer detect()
    {
        dispatcher.take();
        return execute("Detect");
    }
    Lines tolerated()
    {
        Lines records = dispatcher.take();
        std::erase_if(records, [](const std::string& record) { return !record.starts_with("4 "); });
        return records;
    }
    static Lines record(const std::string& text)
    {
        return {"4 orvo.Cognex.CameraConnector thread-id=T|" + text};
    }

    DispatcherControl dispatcher;
};

TEST_F(GenICamPorts, HaveAGapWhereOneFailed)
{
    openBoard(kGenICam, {0, 1, 2});
    ASSERT_EQ(execute("InitializeCameraConnector"), done());
    OrvoSim_answer("Ogc_getCameraOnPort port=1", 1, -6);
    EXPECT_EQ(detect(), done());
    EXPECT_EQ(tolerated(), record("Cannot detect cameras on port 1: ogc error code: -6"));
    EXPECT_THAT(takeJournal("Ogc_connectCamera"), testing::SizeIs(2));
    EXPECT_EQ(read("PortCount"), gives("2"));
    EXPECT_EQ(write("PortIndex", "1"), cannotWrite(kNoSuchKey));
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));   // as before the write
    EXPECT_EQ(write("PortIndex", "2"), done());           // there, but not below their count
    EXPECT_EQ(read("CameraName"), cannotRead(kNotAvailable));
}

TEST_F(GenICamPorts, GoOnAfterEveryFailureAndRecordIt)
{
    openBoard(kGenICam, {0});
    ASSERT_EQ(execute("InitializeCameraConnector"), done());
    const char* const name = "Camera without a record";
    const std::array<const char*, 2> withoutFirst = {nullptr, name}, withoutName = {name, nullptr};
    const std::string onPort = "Cannot detect cameras on port 0: ";
    const std::tuple<const char*, const void*, std::string> rows[] = {
        {"Ogc_scanPorts", nullptr, "ogc error code: -7"},
        {"Ogc_getCameraOnPort", nullptr, onPort + "ogc error code: -7"},
        {"Ogc_connectCamera", nullptr, onPort + "ogc error code: -7"},
        {"Ogc_getCameraInfo", nullptr, onPort + "Cam info is not defined"},
        {"Ogc_getCameraInfo", withoutFirst.data(), onPort + "Cam info is not defined"},
        {"Ogc_getCameraInfo", withoutName.data(), onPort + "Cam info is not defined"},
    };
    for (const auto& [call, bytes, text] : rows) {
        SCOPED_TRACE(call);
        if (bytes)
            OrvoSim_answerWith(call, 1, 0, bytes, sizeof withoutFirst);
        else
            OrvoSim_answer(call, 1, -7);
        EXPECT_EQ(detect(), done());
        EXPECT_EQ(tolerated(), record(text));
        EXPECT_EQ(read("PortCount"), cannotRead(kNotAvailable));
    }
    EXPECT_EQ(detect(), done());
    EXPECT_EQ(tolerated(), Lines());
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
}

}   // namespace

}   // namespace orvo::test

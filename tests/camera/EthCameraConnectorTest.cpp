#include "camera/eth/EthCameraConnector.h"
#include "camera/eth/EthCameraConfigurator.h"
#include "camera/ogc/OgcCamera.h"
#include "tests/camera/ConnectorFixture.h"

namespace orvo::cognex {

namespace {

using test::aikFailure;
using test::available;
using test::bareFailure;
using test::failureText;
using testing::ElementsAre;
using testing::IsEmpty;

// Which features are available, by their numbers, state by state.
const std::set<uint32_t> kUninitialized = {0};
const std::set<uint32_t> kNoPorts = {1, 2};
const std::set<uint32_t> kPortIndexInvalid = {1, 2, 8, 9};
const std::set<uint32_t> kNoCameras = {1, 2, 5, 6, 8, 9};   // and so are those of an invalid camera index
const std::set<uint32_t> kCameraConnected = {1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13,
                                             14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25};

class GigEConnector : public test::ConnectorFixture<EthCameraConnector> {
protected:
    GigEConnector() { libraries.answers["count"] = 2; }
};

TEST_F(GigEConnector, LeadsTheHostByTheAvailabilityOfItsFeatures)
{
    EXPECT_EQ(available(*features), kUninitialized);
    execute("InitializeCameraConnector");
    EXPECT_EQ(available(*features), kNoCameras);
    EXPECT_EQ(read("PortCount"), "2");
    execute("Detect");
    EXPECT_EQ(available(*features), kCameraConnected);
    EXPECT_EQ(connector->state(), ConnectorState::CameraConnected);
    EXPECT_EQ(read("CameraCount"), "1");
    write("CameraIndex", "1");
    EXPECT_EQ(available(*features), kNoCameras);
    EXPECT_EQ(connector->state(), ConnectorState::CameraIndexInvalid);
    write("CameraIndex", "0");
    EXPECT_EQ(available(*features), kCameraConnected);
    for (const char* index : {"2", "-1"}) {
        write("PortIndex", index);
        EXPECT_EQ(available(*features), kPortIndexInvalid);
    }
    write("PortIndex", "1");
    EXPECT_EQ(available(*features), kCameraConnected);
    execute("CloseCameraConnector");
    EXPECT_EQ(available(*features), kUninitialized);
    execute("InitializeCameraConnector");
    EXPECT_EQ(read("PortIndex"), "0");

    appletFake.camPorts = {{}};
    connect();
    execute("InitializeCameraConnector");
    EXPECT_EQ(available(*features), kNoPorts);
}

TEST_F(GigEConnector, CallsItsLibraryInThisOrder)
{
    execute("InitializeCameraConnector");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("open 4 0"));
    execute("Detect");
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("scan 1 4294967295 200", "count 1 0", "camera 1 0 0", "connect 101",
                            "scan 1 4294967295 200", "count 1 1", "camera 1 1 0", "connect 102", "info 101"));
    execute("StartAcquisition");
    execute("StopAcquisition");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("start 101", "stop 101"));
    execute("CloseCameraConnector");
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("disconnect 101", "release 0", "disconnect 102", "release 0", "close 1"));
    EXPECT_EQ(aikFailure([&] { connector->close(); }), "Eth camera connector is not initialized");
    connector->detect();
    EXPECT_THAT(libraries.takeJournal(), IsEmpty());
}

TEST_F(GigEConnector, MakesNoPortOfANumberThatTheAppletKeepsToItself)
{
    appletFake.camPorts = {{0, -1}, {1, 1}};
    connect();
    execute("InitializeCameraConnector");
    EXPECT_EQ(read("PortCount"), "2");
}

TEST_F(GigEConnector, StopsAtGapsInTheNumbersOfItsPorts)
{
    appletFake.camPorts = {{0, 2}};
    connect();
    execute("InitializeCameraConnector");
    EXPECT_EQ(failureText<std::out_of_range>([&] { execute("Detect"); }), "invalid unordered_map<K, T> key");
    EXPECT_EQ(available(*features), kNoCameras);   // found, but the states were not gone through
    EXPECT_EQ(aikFailure([&] { write("PortIndex", "1"); }),
              "Feature could not be written. (Selected port is not available.)");
    EXPECT_EQ(read("PortIndex"), "1");

    appletFake.camPorts = {{2, 3}};
    connect();
    EXPECT_EQ(failureOf("InitializeCameraConnector"),
              "Command could not be executed. (Selected port is not available.)");
    EXPECT_EQ(available(*features), kUninitialized);
    libraries.takeJournal();
    execute("InitializeCameraConnector");
    EXPECT_THAT(libraries.takeJournal(), IsEmpty());   // open it is; the connector's end alone closes it
    connector.reset();
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("close 1"));
}

TEST_F(GigEConnector, StaysClosedWithoutALibraryAndOpenWithoutAnApplet)
{
    libraries.answers["open"] = -3;
    EXPECT_EQ(failureOf("InitializeCameraConnector"), "Command could not be executed. (eth error code: -3)");
    libraries.answers.erase("open");
    libraries.takeJournal();
    applet.reset();
    EXPECT_EQ(failureOf("InitializeCameraConnector"),
              "Command could not be executed. (No applet is loaded!)");
    EXPECT_EQ(available(*features), kUninitialized);
    connector.reset();
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("open 4 0", "close 1"));
}

TEST_F(GigEConnector, EndsASearchAtTheFirstPortThatFails)
{
    execute("InitializeCameraConnector");
    libraries.answers["count"] = -8;
    EXPECT_EQ(bareFailure([&] { execute("Detect"); }), "Eth_getCameraCount failed: out of order");
    libraries.answers["count"] = 1;
    libraries.answers["camera"] = -8;
    EXPECT_EQ(bareFailure([&] { execute("Detect"); }), "Eth_getCameraByIndex failed: out of order");
    libraries.answers.erase("camera");
    libraries.answers["connect"] = -8;
    libraries.takeJournal();
    EXPECT_EQ(failureOf("Detect"), "Command could not be executed. (eth error code: -8)");
    EXPECT_EQ(libraries.takeJournal().back(), "release 101");
    libraries.answers.erase("connect");
    execute("Detect");
    EXPECT_EQ(available(*features), kCameraConnected);
}

TEST_F(GigEConnector, LosesTheCamerasThatRefuseToDisconnect)
{
    openAndDetect();
    libraries.answers["disconnect 101"] = -9;
    EXPECT_EQ(failureOf("Detect"), "Command could not be executed. (eth error code: -9)");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("disconnect 101", "release 101"));
    EXPECT_EQ(aikFailure([&] { read("CameraIntValue"); }),
              "Feature could not be read. (No camera is connected)");
    EXPECT_EQ(failureOf("StartAcquisition"), "Command could not be executed. (No camera is connected)");
    execute("Detect");
    EXPECT_THAT(libraries.takeJournal(), testing::Contains("camera 1 0 0"));

    libraries.answers["disconnect 103"] = -9;
    libraries.answers["disconnect 104"] = -10;
    EXPECT_EQ(failureOf("CloseCameraConnector"), "Command could not be executed. (eth error code: -9)");
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("disconnect 103", "release 103", "disconnect 104", "release 104", "close 1"));
    EXPECT_EQ(available(*features), kUninitialized);

    openAndDetect();
    libraries.answers["disconnect"] = -9;
    connector.reset();
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("disconnect 105", "release 105", "disconnect 106", "release 106", "close 1"));
}

TEST_F(GigEConnector, ReachesTheParametersOfTheSelectedCamera)
{
    openAndDetect();
    write("CameraFeatureKey", "Gain");
    libraries.floatingPoint = 0.123456789;
    EXPECT_EQ(read("CameraFloatValue"), "0.123457");
    libraries.integer = -5'000'000'000;
    EXPECT_EQ(read("CameraIntValue"), "-5000000000");
    libraries.boolean = 2;
    EXPECT_EQ(read("CameraBooleanValue"), "True");
    const std::string longText(300, 'x');
    libraries.text = longText.c_str();
    EXPECT_EQ(read("CameraStringValue"), longText.substr(0, 255));
    libraries.text = nullptr;
    EXPECT_EQ(read("CameraEnumerationValue"), "");
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("getFloat 101 Gain", "getInteger 101 Gain", "getBoolean 101 Gain",
                            "getString 101 Gain", "getEnumeration 101 Gain"));

    write("CameraIntValue", "12abc");
    write("CameraFloatValue", " 2.5");
    for (const char* text : {"True", "False", "true"})
        write("CameraBooleanValue", text);
    write("CameraStringValue", "left");
    write("CameraEnumerationValue", "Mono8");
    execute("CameraCommand");
    for (const char* number : {"CameraIntValue", "CameraFloatValue"})
        EXPECT_EQ(aikFailure([&] { write(number, "abc"); }),
                  "Feature could not be written. (Value cannot be parsed)");
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("setInteger 101 Gain 12", "setFloat 101 Gain 2.5", "setBoolean 101 Gain 0",
                            "setBoolean 101 Gain 1", "setBoolean 101 Gain 1", "setString 101 Gain left",
                            "setEnumeration 101 Gain Mono8", "execute 101 Gain"));
    libraries.answers["execute"] = -4;
    EXPECT_EQ(failureOf("CameraCommand"), "Command could not be executed. (eth error code: -4)");
}

TEST_F(GigEConnector, SendsActionCommandsAndSetsTheKeysOfTheSelectedCamera)
{
    openAndDetect();
    write("PortIndex", "1");
    libraries.takeJournal();
    write("EthActionCommand_DeviceKeyLocal", "1");
    write("EthActionCommand_GroupKeyLocal", "2");
    write("EthActionCommand_GroupMaskLocal", "3");
    EXPECT_THAT(libraries.takeJournal(), IsEmpty());
    execute("EthActionCommand_Send");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("send 1 1 4294967295 1 2 3"));

    write("EthActionCommand_GroupKeyRemote", "5");
    write("EthActionCommand_GroupMaskRemote", "6");
    write("EthActionCommand_DeviceKeyRemote", "4");
    write("EthActionCommand_GroupIndexRemote", "12");
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("register 102 actionDeviceKey 0 1", "register 102 actionDeviceKey 0 1",
                            "register 102 actionDeviceKey 4 1"));
    execute("EthActionCommand_ApplyGroupRemote");
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("register 102 actionGroupKey12 5 1", "register 102 actionGroupMask12 6 1"));

    libraries.answers["register"] = -4;
    EXPECT_EQ(failureOf("EthActionCommand_ApplyGroupRemote"),
              "Command could not be executed. (eth error code: -4)");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("register 102 actionGroupKey12 5 1"));
    EXPECT_EQ(aikFailure([&] { write("EthActionCommand_DeviceKeyRemote", "9"); }),
              "Feature could not be written. (eth error code: -4)");
    EXPECT_EQ(read("EthActionCommand_DeviceKeyRemote"), "9");
}

TEST_F(GigEConnector, HasNoUseForACameraOfTheOtherFamily)
{
    const auto stranger = std::make_shared<OgcCamera>(5);
    EthCameraConfigurator configurator;
    configurator.setCamera(stranger);
    std::array<char, 256> val{};
    EXPECT_EQ(aikFailure([&] { configurator.getInt(val.data()); }), "No camera is connected");
    EXPECT_EQ(aikFailure([&] { configurator.executeCommand(); }), "No camera is connected");
}

}   // namespace

}   // namespace orvo::cognex

#include <cmath>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sim/SimulatedCameras.h"

namespace orvo::test {

namespace {

using ::testing::HasSubstr;

constexpr uint64_t kUntouched = 77;

class Cameras : public SimulatedCameras {};

TEST_F(Cameras, AreFoundByASearchOnly)
{
    beginLife();
    uint64_t library = 0;
    ASSERT_EQ(0, Eth_openBoard(0, 0, &library));
    EXPECT_EQ(0, Eth_getCameraCount(library, 0));
    uint64_t camera = kUntouched;
    EXPECT_EQ(code(CameraStatus::NoCamera), Eth_getCameraByIndex(library, 0, 0, &camera));
    EXPECT_EQ(kUntouched, camera);

    ASSERT_EQ(0, Eth_scanPorts(library, 1 << 1, 200));
    EXPECT_EQ(0, Eth_getCameraCount(library, 0)) << "the mask left it out";
    EXPECT_EQ(1, Eth_getCameraCount(library, 1));
    EXPECT_EQ(0, Eth_getCameraCount(library, 2));
    EXPECT_EQ(code(CameraStatus::NoCamera), Eth_getCameraByIndex(library, 1, 1, &camera));

    const uint64_t first = ethCamera(library, 1);
    const uint64_t second = ethCamera(library, 1);
    EXPECT_NE(first, second) << "a new handle at each call";
    EXPECT_STREQ("Camera 0-1", static_cast<const char*>(Eth_getCameraInfo(first)) + 32);
}

TEST_F(Cameras, OfTheSecondFamilyAreFoundByPosition)
{
    describeBoards(R"({"boards": [{"index": 2, "type": 1872, "cameras": [
        {"port": 9, "name": "right", "model": "M9"}, {"port": 1, "name": "left"}]}]})");
    void* const board = open(2, "{}");
    uint64_t library = kUntouched;
    EXPECT_EQ(code(CameraStatus::NoBoard), Ogc_openBoard(4711, 0, &library));
    EXPECT_EQ(kUntouched, library);
    library = openOgc(board);
    ASSERT_EQ(2, Ogc_getFoundCount(library));
    const auto nameAt = [&](uint32_t position) {
        const auto* const info =
            static_cast<const OgcCameraInfo*>(Ogc_getCameraInfo(ogcCamera(library, position)));
        return std::string(info->model) + ": " + info->name;
    };
    EXPECT_EQ("Simulated camera: left", nameAt(0));
    EXPECT_EQ("M9: right", nameAt(1));
    EXPECT_EQ(code(CameraStatus::NoCamera), Ogc_getCameraOnPort(library, 2, &library));

    const uint64_t camera = ogcCamera(library, 0);
    int64_t width = 0;
    EXPECT_EQ(code(CameraStatus::NotConnected), Ogc_getIntegerValue(camera, "Width", &width));
    EXPECT_EQ(0, Ogc_connectCamera(camera));
    EXPECT_EQ(0, Ogc_connectCamera(camera)) << "no error";
    const uint64_t again = ogcCamera(library, 0);
    EXPECT_EQ(0, Ogc_connectCamera(again)) << "nor by another handle";
    EXPECT_EQ(0, Ogc_getIntegerValue(again, "Width", &width));
    EXPECT_EQ(0, Ogc_closeBoard(library));
    EXPECT_EQ(code(CameraStatus::UnknownCamera), Ogc_getIntegerValue(camera, "Width", &width));
    EXPECT_EQ(0, Ogc_getFoundCount(library));
}

TEST_F(Cameras, OfOneFamilyAreNotReachedThroughTheOtherLibrary)
{
    void* const gigE = open(0, "{}");
    void* const other = open(1, "{}");
    uint64_t library = 0;
    EXPECT_EQ(code(CameraStatus::NoBoard), Eth_openBoard(1, 0, &library));
    EXPECT_EQ(code(CameraStatus::NoBoard), Eth_openBoard(7, 0, &library));
    EXPECT_EQ(code(CameraStatus::NoBoard), Ogc_openBoard(reinterpret_cast<uintptr_t>(gigE), 0, &library));
    const auto handle = reinterpret_cast<uintptr_t>(other);
    EXPECT_EQ(0, Ogc_openBoard(handle, 0, &library));
    Brd_FreeGrabber(other);
    EXPECT_EQ(code(CameraStatus::NoBoard), Ogc_openBoard(handle, 0, &library)) << "the handle has ended";
}

TEST_F(Cameras, EndTheirHandlesForGood)
{
    beginLife();
    const uint64_t library = openEth();
    const auto isOver = [](uint64_t camera) {
        int64_t value = kUntouched;
        char* text = nullptr;
        return Eth_getIntegerValue(camera, "Width", &value) == code(CameraStatus::UnknownCamera) &&
               value == kUntouched && !Eth_getCameraInfo(camera) &&
               Eth_getStringValue(camera, "DeviceModelName", &text) != 0 && !text &&
               Eth_connectCamera(camera) != 0 && Eth_releaseCamera(camera) != 0;
    };
    EXPECT_TRUE(isOver(0));
    EXPECT_TRUE(isOver(library)) << "of the library, not of a camera";

    const uint64_t camera = ethCamera(library, 0);
    Eth_connectCamera(camera);
    OrvoSim_answer("Eth_disconnectCamera", 1, -9);
    EXPECT_EQ(-9, Eth_disconnectCamera(camera));
    EXPECT_EQ(1280, integer(camera, "Width")) << "it lives on";
    EXPECT_EQ(0, Eth_disconnectCamera(camera));
    EXPECT_TRUE(isOver(camera));

    const uint64_t released = ethCamera(library, 0);
    Eth_connectCamera(released);
    EXPECT_EQ(0, Eth_releaseCamera(released));
    EXPECT_TRUE(isOver(released));
    const uint64_t last = ethCamera(library, 0);
    EXPECT_EQ(0, Eth_connectCamera(last)) << "the release disconnected it";
    EXPECT_EQ(0, Eth_closeBoard(library));
    EXPECT_TRUE(isOver(last));
    EXPECT_EQ(code(CameraStatus::UnknownLibrary), Eth_closeBoard(library));

    const uint64_t ofThisLife = connectedEth();
    endLife();
    beginLife();
    EXPECT_TRUE(isOver(ofThisLife));
    EXPECT_NE(ofThisLife, connectedEth());
}

TEST_F(Cameras, StayConnectedThroughASearch)
{
    beginLife();
    const uint64_t library = openEth();
    const uint64_t camera = ethCamera(library, 0);
    const uint64_t rival = ethCamera(library, 0);
    EXPECT_EQ(0, Eth_connectCamera(camera));
    EXPECT_EQ(code(CameraStatus::InUse), Eth_connectCamera(rival));
    EXPECT_EQ(0, Eth_scanPorts(library, 0, 200));
    EXPECT_EQ(1, Eth_getCameraCount(library, 0));
    EXPECT_EQ(0, Eth_getCameraCount(library, 1));
    EXPECT_EQ(1280, integer(camera, "Width"));
}

TEST_F(Cameras, TakeWhatTheirParametersAllow)
{
    beginLife();
    const uint64_t camera = connectedEth();
    const int32_t outOfRange = code(CameraStatus::OutOfRange);
    EXPECT_EQ(0, Eth_setIntegerValue(camera, "Width", 640));
    EXPECT_EQ(0, Eth_setIntegerValue(camera, "OffsetX", 640));
    EXPECT_EQ(outOfRange, Eth_setIntegerValue(camera, "OffsetX", 644)) << "the picture ends with the sensor";
    EXPECT_EQ(outOfRange, Eth_setIntegerValue(camera, "Width", 644)) << "likewise";
    EXPECT_EQ(640, integer(camera, "Width"));
    EXPECT_EQ(0, Eth_setFloatValue(camera, "Gain", 24));
    for (const double gain : {24.01, -0.01, std::nan("")})
        EXPECT_EQ(outOfRange, Eth_setFloatValue(camera, "Gain", gain));
    EXPECT_EQ(0, Eth_setStringValue(camera, "DeviceUserID", std::string(255, 'x').c_str()));
    for (const size_t length : {size_t{256}, size_t{5000}})
        EXPECT_EQ(outOfRange, Eth_setStringValue(camera, "DeviceUserID", std::string(length, 'y').c_str()));
    EXPECT_EQ(std::string(255, 'x'), text(camera, "DeviceUserID"));
    EXPECT_EQ(code(CameraStatus::NullArgument), Eth_executeCommand(camera, nullptr));
    EXPECT_EQ(code(CameraStatus::NullArgument), Eth_getIntegerValue(camera, "Width", nullptr));
}

TEST_F(Cameras, LoadAndSaveUserSets)
{
    beginLife();
    const uint64_t camera = connectedEth();
    EXPECT_EQ(code(CameraStatus::NotWritable), Eth_executeCommand(camera, "UserSetSave"));
    Eth_setIntegerValue(camera, "Width", 320);
    Eth_setEnumerationValue(camera, "UserSetSelector", "UserSet0");
    EXPECT_EQ(0, Eth_executeCommand(camera, "UserSetSave"));
    Eth_setEnumerationValue(camera, "UserSetSelector", "Default");
    EXPECT_EQ(0, Eth_executeCommand(camera, "UserSetLoad"));
    EXPECT_EQ(1280, integer(camera, "Width"));
    Eth_setEnumerationValue(camera, "UserSetSelector", "UserSet0");
    EXPECT_EQ(0, Eth_executeCommand(camera, "UserSetLoad"));
    EXPECT_EQ(320, integer(camera, "Width"));
}

TEST_F(Cameras, HaveTheRegistersOfActionCommandsAndNoOthers)
{
    beginLife();
    const uint64_t camera = connectedEth();
    const uint32_t value = 5;
    for (const char* const name : {"actionDeviceKey", "actionGroupKey0", "actionGroupMask127"})
        EXPECT_EQ(0, Eth_setCameraRegister(camera, name, &value, 1)) << name;
    for (const char* const name : {"actionGroupKey128", "actionGroupKey", "actionGroupMask01",
                                   "actionGroupKey-1", "actionDeviceKey0", "Width", ""})
        EXPECT_EQ(code(CameraStatus::UnknownRegister), Eth_setCameraRegister(camera, name, &value, 1))
            << name;
    EXPECT_EQ(code(CameraStatus::WrongArgument), Eth_setCameraRegister(camera, "actionDeviceKey", &value, 2));
}

TEST_F(Cameras, AreInTheJournalAndInTheScript)
{
    beginLife();
    const uint64_t library = openEth();
    const uint64_t camera = ethCamera(library, 1);
    OrvoSim_clearJournal();
    Eth_connectCamera(camera);
    Eth_setFloatValue(camera, "Gain", 1.5);
    Eth_disconnectCamera(camera);
    Eth_releaseCamera(camera);
    Eth_releaseCamera(0);
    EXPECT_EQ("Eth_connectCamera camera=c1 -> 0\n"
              "Eth_setFloatValue camera=c1 name=\"Gain\" value=1.5 -> 0\n"
              "Eth_disconnectCamera camera=c1 -> 0\n"
              "Eth_releaseCamera camera=? -> -3012\n"
              "Eth_releaseCamera camera=null -> -3012\n",
              journal());

    const uint64_t scripted = ethCamera(library, 0);
    Eth_connectCamera(scripted);
    const int64_t width = -12;
    OrvoSim_answerWith("Eth_getIntegerValue name=\"Width\"", 2, 0, &width, sizeof width);
    OrvoSim_answerWith("Eth_getStringValue", 1, 0, "forged", 7);
    OrvoSim_answer("Eth_getCameraInfo", 1, 0);
    OrvoSim_answer("Eth_getCameraCount port=0", 1, 3);
    EXPECT_EQ(1280, integer(scripted, "Width"));
    EXPECT_EQ(-12, integer(scripted, "Width"));
    EXPECT_EQ("forged", text(scripted, "DeviceModelName"));
    EXPECT_EQ(nullptr, Eth_getCameraInfo(scripted));
    EXPECT_EQ(3, Eth_getCameraCount(library, 0));
}

TEST_F(Cameras, AreDescribedInTheBoardsFile)
{
    describeBoards(R"({"boards": [{"index": 0, "type": 2897, "cameras": [
        {"port": 3, "vendor": "V", "model": "M", "serial": "S", "name": "N", "vanishAfterCalls": 9,
         "parameters": {"OffsetX": 100, "Width": 200, "WidthMax": 300, "DeviceTemperature": 80,
                        "PixelFormat": "RGB8", "ReverseX": true}}]}]})");
    beginLife();
    const uint64_t camera = connectedEth(3);
    EXPECT_EQ(300, integer(camera, "WidthMax"));
    EXPECT_EQ(100, integer(camera, "OffsetX"));
    EXPECT_EQ("RGB8", entry(camera, "PixelFormat"));
    EXPECT_EQ("M", text(camera, "DeviceModelName"));
    EXPECT_EQ("S", text(camera, "DeviceSerialNumber"));
    double temperature = 0;
    Eth_getFloatValue(camera, "DeviceTemperature", &temperature);
    EXPECT_EQ(80, temperature);
    Eth_setIntegerValue(camera, "Width", 16);
    Eth_setIntegerValue(camera, "Width", 20);
    EXPECT_EQ(code(CameraStatus::Gone), Eth_setIntegerValue(camera, "Width", 24)) << "the tenth call";
}

TEST_F(Cameras, AreRefusedWithThePlaceOfTheMistake)
{
    const auto problem = [&](const std::string& cameras) {
        describeBoards(R"({"boards": [{"index": 0, "type": 2897, "cameras": )" + cameras + "}]}");
        EXPECT_EQ(nullptr, open(0, "{}"));
        std::string text = lastError();
        endLife();
        return text;
    };
    EXPECT_THAT(problem(R"([{"port": 1}, {"port": 1}])"),
                HasSubstr("boards[0].cameras[1].port: another camera stands behind port 1"));
    EXPECT_THAT(problem(R"([{"port": 1, "parameters": {"Weight": 1}}])"),
                HasSubstr("boards[0].cameras[0].parameters.Weight: a camera has no parameter of that name"));
    EXPECT_THAT(problem(R"([{"port": 1, "parameters": {"Gain": 99}}])"), HasSubstr("range"));
    EXPECT_THAT(problem(R"([{"port": 1, "parameters": {"Width": "wide"}}])"), HasSubstr("whole number"));
    EXPECT_THAT(problem(R"([{"port": 256}])"), HasSubstr("from 0 to 255"));
}

}   // namespace

}   // namespace orvo::test

#include <cmath>
#include <string>

#include <gtest/gtest.h>

#include "tests/sim/SimulatedCameras.h"

namespace orvo::test {

namespace {

constexpr uint64_t kUntouched = 77;

class Cameras : public SimulatedCameras {};

TEST_F(Cameras, AreFoundByASearchAndStayConnectedThroughTheNext)
{
    beginLife();
    uint64_t library = 0, camera = kUntouched;
    ASSERT_EQ(0, Eth_openBoard(0, 0, &library));
    EXPECT_EQ(code(CameraStatus::NoCamera), Eth_getCameraByIndex(library, 0, 0, &camera));
    EXPECT_EQ(kUntouched, camera);
    ASSERT_EQ(0, Eth_scanPorts(library, 1 << 1, 200));
    EXPECT_EQ(0, Eth_getCameraCount(library, 0)) << "the mask left it out";
    EXPECT_EQ(1, Eth_getCameraCount(library, 1));

    camera = ethCamera(library, 1);
    const uint64_t rival = ethCamera(library, 1);
    EXPECT_EQ(0, Eth_connectCamera(camera));
    EXPECT_EQ(code(CameraStatus::InUse), Eth_connectCamera(rival));
    EXPECT_EQ(0, Eth_scanPorts(library, 0, 200));
    EXPECT_EQ(1, Eth_getCameraCount(library, 1));
    EXPECT_EQ(1280, integer(camera, "Width"));
}

TEST_F(Cameras, OfTheSecondFamilyAreFoundByPosition)
{
    describeBoards(R"({"boards": [{"index": 2, "type": 1872, "cameras": [
        {"port": 9, "name": "right"}, {"port": 1, "name": "left"}]}]})");
    uint64_t library = openOgc(open(2, "{}"));
    ASSERT_EQ(2, Ogc_getFoundCount(library));
    const auto nameAt = [&](uint32_t position) {
        return static_cast<const OgcCameraInfo*>(Ogc_getCameraInfo(ogcCamera(library, position)))->name;
    };
    EXPECT_STREQ("left", nameAt(0));
    EXPECT_STREQ("right", nameAt(1));

    const uint64_t camera = ogcCamera(library, 0);
    int64_t width = 0;
    EXPECT_EQ(code(CameraStatus::NotConnected), Ogc_getIntegerValue(camera, "Width", &width));
    for (const uint64_t handle : {camera, camera, ogcCamera(library, 0)})
        EXPECT_EQ(0, Ogc_connectCamera(handle)) << "however often, by whichever handle";
    EXPECT_EQ(0, Ogc_closeBoard(library));
    EXPECT_EQ(code(CameraStatus::UnknownCamera), Ogc_getIntegerValue(camera, "Width", &width));
}

TEST_F(Cameras, EndTheirHandlesForGood)
{
    beginLife();
    const uint64_t library = openEth();
    const auto isOver = [](uint64_t camera) {
        int64_t value = kUntouched;
        return Eth_getIntegerValue(camera, "Width", &value) == code(CameraStatus::UnknownCamera) &&
               value == kUntouched && !Eth_getCameraInfo(camera) && Eth_connectCamera(camera) != 0 &&
               Eth_releaseCamera(camera) != 0;
    };
    EXPECT_TRUE(isOver(library)) << "of the library, not of a camera";
    const uint64_t disconnected = ethCamera(library, 0);
    Eth_connectCamera(disconnected);
    EXPECT_EQ(0, Eth_disconnectCamera(disconnected));
    EXPECT_TRUE(isOver(disconnected));

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

TEST_F(Cameras, HaveTheRegistersOfActionCommandsAndNoOthers)
{
    beginLife();
    const uint64_t camera = connectedEth();
    const uint32_t value = 5;
    EXPECT_EQ(0, Eth_setCameraRegister(camera, "actionGroupMask127", &value, 1));
    for (const char* const name : {"actionGroupKey128", "actionGroupKey", "actionGroupMask01",
                                   "actionGroupKey-1", "actionDeviceKey0", "Width", ""})
        EXPECT_EQ(code(CameraStatus::UnknownRegister), Eth_setCameraRegister(camera, name, &value, 1))
            << name;
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

TEST_F(Cameras, TakeWhatTheirParametersAllowTogether)
{
    beginLife();
    const uint64_t camera = connectedEth();
    EXPECT_EQ(0, Eth_setIntegerValue(camera, "Width", 640));
    EXPECT_EQ(0, Eth_setIntegerValue(camera, "OffsetX", 640));
    const int32_t kOutOfRange = code(CameraStatus::OutOfRange);
    EXPECT_EQ(kOutOfRange, Eth_setIntegerValue(camera, "OffsetX", 644)) << "the sensor ends there";
    EXPECT_EQ(kOutOfRange, Eth_setIntegerValue(camera, "Width", 644));
    EXPECT_EQ(kOutOfRange, Eth_setFloatValue(camera, "Gain", std::nan("")));
    EXPECT_EQ(0, Eth_setStringValue(camera, "DeviceUserID", std::string(255, 'x').c_str()));
    for (const size_t length : {size_t{256}, size_t{5000}})
        EXPECT_EQ(kOutOfRange, Eth_setStringValue(camera, "DeviceUserID", std::string(length, 'y').c_str()));
    EXPECT_EQ(std::string(255, 'x'), text(camera, "DeviceUserID"));
    EXPECT_EQ(code(CameraStatus::NullArgument), Eth_getIntegerValue(camera, "Width", nullptr));
}

TEST_F(Cameras, LoadAndSaveUserSetsAndLoseAllWithTheirPower)
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
    EXPECT_EQ(0, OrvoSim_vanishCamera(0, 9, 0));
    EXPECT_EQ(1, OrvoSim_vanishCamera(0, 0, 0));
    EXPECT_EQ(1, OrvoSim_restoreCamera(0, 0));
    EXPECT_EQ(1280, integer(connectedEth(), "Width"));
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

}   // namespace

}   // namespace orvo::test

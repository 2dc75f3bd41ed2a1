#include <cmath>

#include "sim/orvo_genicam/orvo_genicam.h"
#include "tests/sim/SimulatedCameras.h"

namespace orvo::test {

namespace {

class Cameras : public SimulatedCameras {
protected:
    static int64_t integer(uint64_t camera, const char* name)
    {
        int64_t value = 0;
        EXPECT_EQ(0, Eth_getIntegerValue(camera, name, &value)) << name;
        return value;
    }
    static std::string text(uint64_t camera, const char* name)
    {
        char* value = nullptr;
        EXPECT_TRUE(Eth_getStringValue(camera, name, &value) == 0 ||
                    Eth_getEnumerationValue(camera, name, &value) == 0)
            << name;
        return value ? value : "";
    }
};

TEST_F(Cameras, AreFoundByASearchAndStayConnectedThroughTheNext)
{
    constexpr uint64_t kUntouched = 77;
    beginSession();
    uint64_t library = 0, camera = kUntouched;
    ASSERT_EQ(0, Eth_openBoard(0, 0, &library));
    EXPECT_EQ(code(CameraStatus::NoCamera), Eth_getCameraByIndex(library, 0, 0, &camera));
    EXPECT_EQ(kUntouched, camera);
    ASSERT_EQ(0, Eth_scanPorts(library, 1 << 1, 200));
    EXPECT_EQ(0, Eth_getCameraCount(library, 0)) << "the mask left it out";
    EXPECT_EQ(1, Eth_getCameraCount(library, 1));

    camera = ethCamera(library, 1);
    EXPECT_EQ(0, Eth_connectCamera(camera));
    EXPECT_EQ(code(CameraStatus::InUse), Eth_connectCamera(ethCamera(library, 1)));
    EXPECT_EQ(0, Eth_scanPorts(library, 0, 200));
    EXPECT_EQ(1, Eth_getCameraCount(library, 1));
    EXPECT_EQ(1280, integer(camera, "Width"));
}

TEST_F(Cameras, OfTheSecondFamilyAreFoundByPosition)
{
    describe(R"({"boards": [{"index": 2, "type": 1872, "cameras": [
        {"port": 9, "name": "right"}, {"port": 1, "name": "left"}]}]})");
    uint64_t library = 0;
    EXPECT_EQ(0, Ogc_openBoard(reinterpret_cast<uintptr_t>(open(2)), 0, &library));
    EXPECT_EQ(0, Ogc_scanPorts(library, 255, 5000, 0));
    ASSERT_EQ(2, Ogc_getFoundCount(library));
    uint64_t left = 0, right = 0, leftAgain = 0;
    for (const auto& [position, camera] : {std::pair(0u, &left), {1, &right}, {0, &leftAgain}})
        ASSERT_EQ(0, Ogc_getCameraOnPort(library, position, camera));
    const auto nameOf = [](uint64_t camera) {
        return static_cast<const OgcCameraInfo*>(Ogc_getCameraInfo(camera))->name;
    };
    EXPECT_STREQ("left", nameOf(left));
    EXPECT_STREQ("right", nameOf(right));

    int64_t width = 0;
    EXPECT_EQ(code(CameraStatus::NotConnected), Ogc_getIntegerValue(left, "Width", &width));
    for (const uint64_t camera : {left, left, leftAgain})
        EXPECT_EQ(0, Ogc_connectCamera(camera)) << "however often, by whichever handle";
    EXPECT_EQ(0, Ogc_closeBoard(library));
    EXPECT_EQ(code(CameraStatus::UnknownCamera), Ogc_getIntegerValue(left, "Width", &width));
}

TEST_F(Cameras, EndTheirHandlesForGood)
{
    const uint64_t library = searchedEth();
    const auto isOver = [](uint64_t camera) {
        int64_t width = 0;
        return Eth_getIntegerValue(camera, "Width", &width) == code(CameraStatus::UnknownCamera) &&
               !Eth_getCameraInfo(camera) && Eth_connectCamera(camera) != 0 && Eth_releaseCamera(camera) != 0;
    };
    EXPECT_TRUE(isOver(library)) << "of the library, not of a camera";
    for (const auto end : {Eth_disconnectCamera, Eth_releaseCamera}) {
        const uint64_t camera = ethCamera(library, 0);
        EXPECT_EQ(0, Eth_connectCamera(camera)) << "the handle before it has disconnected";
        EXPECT_EQ(0, end(camera));
        EXPECT_TRUE(isOver(camera));
    }
    const uint64_t last = ethCamera(library, 0);
    EXPECT_EQ(0, Eth_connectCamera(last));
    EXPECT_EQ(0, Eth_closeBoard(library));
    EXPECT_TRUE(isOver(last));
    EXPECT_EQ(code(CameraStatus::UnknownLibrary), Eth_closeBoard(library));

    const uint64_t ofThisSession = connectedEth();
    endSession();
    const uint64_t ofTheNext = connectedEth();
    EXPECT_NE(ofThisSession, ofTheNext);
    EXPECT_TRUE(isOver(ofThisSession));
}

TEST_F(Cameras, HaveTheRegistersOfActionCommandsAndNoOthers)
{
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
    const auto gigEVision = reinterpret_cast<uintptr_t>(open(0));
    void* const board = open(1);
    const auto genICam = reinterpret_cast<uintptr_t>(board);
    uint64_t library = 0;
    for (const int32_t index : {1, 7})
        EXPECT_EQ(code(CameraStatus::NoBoard), Eth_openBoard(index, 0, &library));
    EXPECT_EQ(code(CameraStatus::NoBoard), Ogc_openBoard(gigEVision, 0, &library));
    EXPECT_EQ(0, Ogc_openBoard(genICam, 0, &library));
    Brd_FreeGrabber(board);
    EXPECT_EQ(code(CameraStatus::NoBoard), Ogc_openBoard(genICam, 0, &library)) << "the handle has ended";
}

TEST_F(Cameras, TakeWhatTheirParametersAllowTogether)
{
    const uint64_t camera = connectedEth();
    EXPECT_EQ(0, Eth_setIntegerValue(camera, "Width", 640));
    EXPECT_EQ(0, Eth_setIntegerValue(camera, "OffsetX", 640));
    const int32_t kOutOfRange = code(CameraStatus::OutOfRange);
    EXPECT_EQ(kOutOfRange, Eth_setIntegerValue(camera, "OffsetX", 644)) << "the sensor ends there";
    EXPECT_EQ(kOutOfRange, Eth_setIntegerValue(camera, "Width", 644));
    EXPECT_EQ(kOutOfRange, Eth_setFloatValue(camera, "Gain", std::nan("")));
    EXPECT_EQ(0, Eth_setStringValue(camera, "DeviceUserID", std::string(255, 'x').c_str()));
    for (const size_t length : {256, 5000})
        EXPECT_EQ(kOutOfRange, Eth_setStringValue(camera, "DeviceUserID", std::string(length, 'y').c_str()));
    EXPECT_EQ(std::string(255, 'x'), text(camera, "DeviceUserID"));
    EXPECT_EQ(code(CameraStatus::NullArgument), Eth_getIntegerValue(camera, "Width", nullptr));
}

TEST_F(Cameras, LoadAndSaveUserSetsAndLoseThemWithTheirPower)
{
    uint64_t camera = connectedEth();
    const auto widthOf = [&](const char* userSet) {
        EXPECT_EQ(0, Eth_setEnumerationValue(camera, "UserSetSelector", userSet));
        EXPECT_EQ(0, Eth_executeCommand(camera, "UserSetLoad"));
        return integer(camera, "Width");
    };
    EXPECT_EQ(code(CameraStatus::NotWritable), Eth_executeCommand(camera, "UserSetSave"))
        << "the default set";
    Eth_setIntegerValue(camera, "Width", 320);
    Eth_setEnumerationValue(camera, "UserSetSelector", "UserSet0");
    EXPECT_EQ(0, Eth_executeCommand(camera, "UserSetSave"));
    EXPECT_EQ(1280, widthOf("Default"));
    EXPECT_EQ(320, widthOf("UserSet0"));
    EXPECT_EQ(0, OrvoSim_vanishCamera(0, 9, 0));
    EXPECT_EQ(1, OrvoSim_vanishCamera(0, 0, 0));
    EXPECT_EQ(1, OrvoSim_restoreCamera(0, 0));
    camera = connectedEth();
    EXPECT_EQ(1280, integer(camera, "Width"));
}

TEST_F(Cameras, AreDescribedInTheBoardsFile)
{
    describeBoard(R"("cameras": [{"port": 3, "vendor": "V", "model": "M", "vanishAfterCalls": 7, "parameters":
        {"OffsetX": 100, "Width": 200, "WidthMax": 300, "DeviceTemperature": 80, "PixelFormat": "RGB8"}}])");
    const uint64_t camera = connectedEth(3);
    EXPECT_EQ(300, integer(camera, "WidthMax"));
    EXPECT_EQ(100, integer(camera, "OffsetX"));
    EXPECT_EQ("RGB8", text(camera, "PixelFormat"));
    EXPECT_EQ("M", text(camera, "DeviceModelName"));
    double temperature = 0;
    Eth_getFloatValue(camera, "DeviceTemperature", &temperature);
    EXPECT_EQ(80, temperature);
    EXPECT_EQ(code(CameraStatus::Gone), Eth_setIntegerValue(camera, "Width", 24)) << "the eighth call";
}

}   // namespace

}   // namespace orvo::test

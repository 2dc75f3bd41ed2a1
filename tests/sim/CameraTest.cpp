#include <cmath>
#include <list>
#include <string>

#include "sim/ethlib/ethlib.h"
#include "sim/seam/Camera.h"
#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using sim::CameraStatus;

constexpr int32_t code(CameraStatus status)
{
    return static_cast<int32_t>(status);
}

/// The built-in boards with their cameras, unless a test describes others.
class Cameras : public SimulatedBoards {
protected:
    Cameras() { useBoardsFile(""); }

    /// The library of the first board after a finished search, in a session that is begun if there is none.
    uint64_t searchedEth(uint32_t ports = 0xFFFF'FFFF)
    {
        beginSession();
        uint64_t library = 0;
        EXPECT_EQ(0, Eth_openBoard(0, 0, &library));
        EXPECT_EQ(0, Eth_scanPorts(library, ports, 200));
        return library;
    }

    static uint64_t ethCamera(uint64_t library, uint32_t port)
    {
        uint64_t camera = 0;
        EXPECT_EQ(0, Eth_getCameraByIndex(library, port, 0, &camera));
        return camera;
    }

    uint64_t connectedEth(uint32_t port = 0)
    {
        const uint64_t camera = ethCamera(searchedEth(), port);
        EXPECT_EQ(0, Eth_connectCamera(camera));
        return camera;
    }

    static int64_t integer(uint64_t camera, const char* name)
    {
        int64_t value = 0;
        EXPECT_EQ(0, Eth_getIntegerValue(camera, name, &value)) << name;
        return value;
    }
};

TEST_F(Cameras, AreFoundByASearchAndStayConnectedThroughTheNext)
{
    const uint64_t library = searchedEth(1 << 1);
    uint64_t camera = 0;
    EXPECT_EQ(code(CameraStatus::NoCamera), Eth_getCameraByIndex(library, 0, 0, &camera)) << "not searched";
    camera = ethCamera(library, 1);
    EXPECT_EQ(0, Eth_connectCamera(camera));
    EXPECT_EQ(code(CameraStatus::InUse), Eth_connectCamera(ethCamera(library, 1)));
    EXPECT_EQ(0, Eth_scanPorts(library, 0, 200));
    EXPECT_EQ(1, Eth_getCameraCount(library, 1));
    EXPECT_EQ(1280, integer(camera, "Width"));
}

TEST_F(Cameras, EndTheirHandlesForGood)
{
    const auto isOver = [](uint64_t camera) {
        int64_t width = 0;
        return Eth_getIntegerValue(camera, "Width", &width) == code(CameraStatus::UnknownCamera) &&
               !Eth_getCameraInfo(camera) && Eth_connectCamera(camera) != 0 && Eth_releaseCamera(camera) != 0;
    };
    const uint64_t library = searchedEth();
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
    endSession();
    EXPECT_NE(last, connectedEth()) << "of the next session";
    EXPECT_TRUE(isOver(last));
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
    EXPECT_EQ(kOutOfRange, Eth_setStringValue(camera, "DeviceUserID", std::string(256, 'y').c_str()));
}

TEST_F(Cameras, AreDescribedInTheBoardsFile)
{
    describeBoard(R"("cameras": [{"port": 3, "vanishAfterCalls": 3, "parameters":
        {"OffsetX": 100, "Width": 200, "WidthMax": 300}}])");
    const uint64_t camera = connectedEth(3);
    EXPECT_EQ(300, integer(camera, "WidthMax"));
    EXPECT_EQ(100, integer(camera, "OffsetX"));
    EXPECT_EQ(code(CameraStatus::Gone), Eth_setIntegerValue(camera, "Width", 24)) << "the fourth call";
}

constexpr const char* kSmall = R"({"width": 8, "height": 4, "processes": [{"dmas": 2}]})";

/// Boards whose pictures come from cameras.
class CameraPictures : public Cameras {
protected:
    /// A running DMA whose blocks nobody gives back.
    BoardRing& run(void* board, uint32_t dma, size_t blocks = 8)
    {
        BoardRing& ring = m_rings.emplace_back(board, dma, blocks, 96);
        EXPECT_EQ(0, ring.start());
        return ring;
    }

private:
    std::list<BoardRing> m_rings;
};

TEST_F(CameraPictures, ComeOnceTheGigEVisionCameraOfItsPortIsStarted)
{
    describeBoard(R"("cameras": [{"port": 2}])");
    void* const board = open(0, R"({"width": 8, "height": 4, "processes": [
        {"dmas": 2, "cameraPorts": [{"port": 2, "dma": 1}]}, {"dmas": 1, "cameraPorts": [4, 2]}]})");
    for (const uint32_t dma : {0u, 1u, 2u})
        run(board, dma);
    const uint64_t camera = connectedEth(2);
    ASSERT_TRUE(waitForDelivered(3, 0)) << "the applet's own pictures";
    ASSERT_TRUE(waitForDelivered(3, 2)) << "likewise: no camera is connected to port 4";
    EXPECT_EQ(0u, ledger(1).produced) << "connected, not started";
    EXPECT_EQ(0, Eth_startAcquisition(camera));
    EXPECT_TRUE(waitForDelivered(1, 1));
}

TEST_F(CameraPictures, KeepTheCamerasRate)
{
    void* const board = open(0, kSmall);
    const uint64_t camera = connectedEth();
    Eth_setFloatValue(camera, "AcquisitionFrameRate", 200);
    ASSERT_EQ(0, Eth_startAcquisition(camera));
    const auto microsecondsOfThree = [&](uint64_t delivered) {
        const BoardRing& ring = run(board, 0, 4);
        EXPECT_TRUE(waitForDelivered(delivered));
        ring.stop();
        return ring.microsecondsAt(4);
    };
    EXPECT_EQ(30'000, microsecondsOfThree(4)) << "as an exposure of 10 ms allows";
    EXPECT_EQ(100, ledger().askedRate);
    Eth_setFloatValue(camera, "ExposureTime", 1'000);
    EXPECT_EQ(15'000, microsecondsOfThree(8));
}

TEST_F(CameraPictures, ComeOncePerSoftwareTriggerWhileTheCameraIsThere)
{
    run(open(0, kSmall), 0);
    const uint64_t camera = connectedEth();
    const auto trigger = [&] { return Eth_executeCommand(camera, "TriggerSoftware"); };
    Eth_setEnumerationValue(camera, "TriggerMode", "On");
    EXPECT_EQ(0, trigger()) << "not started: lost";
    Eth_startAcquisition(camera);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(0, trigger());
    EXPECT_TRUE(waitForDelivered(3));
    Eth_setEnumerationValue(camera, "TriggerSource", "Line0");
    EXPECT_EQ(0, trigger()) << "goes nowhere";
    Eth_setEnumerationValue(camera, "TriggerSource", "Software");
    EXPECT_EQ(0, trigger());
    EXPECT_TRUE(waitForDelivered(4));
    EXPECT_FALSE(OrvoSim_waitForDelivered(0, 0, 5, 50)) << "neither of the two others comes late";
    ASSERT_EQ(1, OrvoSim_vanishCamera(0, 0, 0));
    EXPECT_EQ(code(CameraStatus::Gone), trigger());
    EXPECT_EQ(4u, ledger().produced);
}

TEST_F(CameraPictures, ComeFromTheCamerasThatAnActionCommandIsFor)
{
    describeBoard(R"("cameras": [{"port": 0}, {"port": 1}, {"port": 2}])");
    void* const board = open(0, R"({"width": 8, "height": 4, "processes": [{"dmas": 3}]})");
    const uint64_t library = searchedEth();
    const uint32_t masks[] = {0b011, 0b110, 0b100};
    const uint32_t deviceKey = 7, groupKey = 9;
    uint64_t camera = 0;
    for (uint32_t port = 0; port < 3; ++port) {
        run(board, port);
        camera = ethCamera(library, port);
        Eth_connectCamera(camera);
        Eth_setEnumerationValue(camera, "TriggerMode", "On");
        Eth_setCameraRegister(camera, "actionDeviceKey", &deviceKey, 1);
        Eth_setCameraRegister(camera, "actionGroupKey12", &groupKey, 1);
        Eth_setCameraRegister(camera, "actionGroupMask12", &masks[port], 1);
        Eth_startAcquisition(camera);
    }
    EXPECT_EQ(0, Eth_sendActionCommand(library, 0, 0xFFFF'FFFF, 8, 9, 0b010)) << "of another device";
    EXPECT_EQ(0, Eth_sendActionCommand(library, 0, 0xFFFF'FFFF, 7, 8, 0b010)) << "of another group";
    EXPECT_EQ(0, Eth_sendActionCommand(library, 2, 0xFFFF'FFFF, 7, 9, 0b010)) << "of all ports";
    EXPECT_EQ(0, Eth_sendActionCommand(library, 1, 0, 7, 9, 0b010)) << "of one";
    Eth_executeCommand(camera, "TriggerSoftware");
    const uint64_t pictures[] = {1, 2, 1};
    for (uint32_t dma = 0; dma < 3; ++dma) {
        ASSERT_TRUE(waitForDelivered(pictures[dma], dma));
        EXPECT_EQ(pictures[dma], ledger(dma).produced) << "DMA " << dma;
    }
}

/// Pictures delivered by hand, 8 x 4 pixels.
class PicturesByHand : public CameraPictures {
protected:
    PicturesByHand() { OrvoSim_setManual(1); }

    void start(const char* applet, const char* pattern)
    {
        board = open(0, applet);
        camera = connectedEth();
        Eth_setEnumerationValue(camera, "TestPattern", pattern);
    }

    /// A row of grey pixels of a new run's first picture.
    Bytes row(size_t y)
    {
        const BoardRing ring(board, 0, 1, 96);
        ring.start();
        EXPECT_EQ(1, OrvoSim_deliver(0, 0, 1));
        const auto* const first = ring.blocks[0].data() + 8 * y;
        return {first, first + 8};
    }

    void* board = nullptr;
    uint64_t camera = 0;
};

TEST_F(PicturesByHand, ObeyTheParameters)
{
    start(kSmall, "GreyDiagonalRampMoving");
    EXPECT_EQ((Bytes{2, 3, 4, 5, 6, 7, 8, 9}), row(1)) << "the picture's number counts, too";
    Eth_setEnumerationValue(camera, "TestPattern", "GreyHorizontalRamp");
    Eth_setFloatValue(camera, "ExposureTime", 20'000);
    EXPECT_EQ((Bytes{0, 2, 4, 6, 8, 10, 12, 14}), row(0));
    Eth_setFloatValue(camera, "Gain", 20 * std::log10(1.5));
    EXPECT_EQ((Bytes{0, 3, 6, 9, 12, 15, 18, 21}), row(0));
    Eth_executeCommand(camera, "UserSetLoad");
    Eth_setEnumerationValue(camera, "TestPattern", "GreyHorizontalRamp");
    Eth_setIntegerValue(camera, "Width", 16);
    Eth_setIntegerValue(camera, "OffsetX", 100);
    Eth_setBooleanValue(camera, "ReverseX", 1);
    EXPECT_EQ((Bytes{115, 114, 113, 112, 111, 110, 109, 108}), row(0));
    Eth_setEnumerationValue(camera, "TestPattern", "GreyVerticalRamp");
    Eth_setIntegerValue(camera, "Height", 16);
    Eth_setIntegerValue(camera, "OffsetY", 100);
    Eth_setBooleanValue(camera, "ReverseY", 1);
    EXPECT_EQ(Bytes(8, 112), row(3));
}

TEST_F(PicturesByHand, AreConvertedToTheBoardsFormat)
{
    start(R"({"width": 8, "height": 4, "format": 2})", "ColorBar");
    Eth_setIntegerValue(camera, "Width", 16);   // the bars are parts of the sensor, not of the picture
    Eth_setIntegerValue(camera, "OffsetX", 960);
    const Bytes grey = row(0);
    EXPECT_TRUE(grey[0] == grey[1] && grey[1] == grey[2]) << "a grey camera on a colour board";
    EXPECT_NE(0, grey[0]);
    Eth_setEnumerationValue(camera, "PixelFormat", "RGB8");
    Eth_setFloatValue(camera, "Gain", 6);   // so that each pixel is worked on
    EXPECT_EQ((Bytes{255, 0, 0, 255, 0, 0, 255, 0}), row(0)) << "blue";
}

}   // namespace

}   // namespace orvo::test

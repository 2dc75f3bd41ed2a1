#include <chrono>
#include <cmath>
#include <list>

#include "sim/cameras/ExposureSchedule.h"
#include "tests/sim/SimulatedCameras.h"

namespace orvo::test {

namespace {

constexpr const char* kSmall = R"({"width": 8, "height": 4, "processes": [{"dmas": 2}]})";

/// Boards whose pictures come from cameras.
class CameraPictures : public SimulatedCameras {
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
    EXPECT_EQ(1u, parameter(board, 3060, 0));
    int32_t word = 1;
    EXPECT_EQ(0, Brd_getParameter(board, 3090, &word, 1));
    EXPECT_EQ(2, word) << "a port beyond the DMAs of its process feeds none";
    for (const uint32_t dma : {0, 1, 2})
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

TEST(ExposureSchedule, OwesNothingOfTheOldRateAtANewOne)
{
    using namespace std::chrono_literals;
    const auto opened = sim::ExposureSchedule::Clock::now();
    sim::ExposureSchedule schedule(opened);
    EXPECT_EQ(opened + 10s, schedule.due({true, false, 10s}, opened));
    EXPECT_EQ(opened + 10s, schedule.take());
    EXPECT_EQ(opened + 19s, schedule.due({true, false, 1ms}, opened + 19s)) << "not 9000 pictures at once";
    EXPECT_EQ(opened + 19s, schedule.take());
    EXPECT_EQ(opened + 19s + 1ms, schedule.due({true, false, 1ms}, opened + 20s)) << "what is late stays due";
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
    ASSERT_EQ(1, OrvoSim_vanishCamera(0, 0, 0));
    EXPECT_EQ(code(CameraStatus::Gone), trigger());
    EXPECT_EQ(4u, ledger().produced);
}

TEST_F(CameraPictures, ComeFromTheCamerasThatAnActionCommandIsFor)
{
    const std::string triggered = R"("parameters": {"TriggerMode": "On"}})";
    describeBoard(R"("cameras": [{"port": 0, )" + triggered + R"(, {"port": 1, )" + triggered +
                  R"(, {"port": 2, )" + triggered + "]");
    void* const board = open(0, R"({"width": 8, "height": 4, "processes": [{"dmas": 3}]})");
    const uint64_t library = searchedEth();
    const uint32_t masks[] = {0b011, 0b110, 0b100};
    const uint32_t deviceKey = 7, groupKey = 9;
    uint64_t camera = 0;
    for (uint32_t port = 0; port < 3; ++port) {
        run(board, port);
        camera = ethCamera(library, port);
        Eth_connectCamera(camera);
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

    /// Some bytes of the next picture, which has a new ring.
    Bytes bytes(size_t from, size_t count)
    {
        const BoardRing& ring = run(board, 0, 1);
        EXPECT_EQ(1, OrvoSim_deliver(0, 0, 1));
        ring.stop();
        const auto first = ring.blocks[0].begin() + static_cast<std::ptrdiff_t>(from);
        return {first, first + static_cast<std::ptrdiff_t>(count)};
    }
    Bytes row(size_t y) { return bytes(8 * y, 8); }

    void* board = nullptr;
    uint64_t camera = 0;
};

TEST_F(PicturesByHand, ObeyTheParameters)
{
    start(kSmall, "GreyHorizontalRamp");
    EXPECT_EQ((Bytes{0, 1, 2, 3, 4, 5, 6, 7}), row(3));
    Eth_setFloatValue(camera, "ExposureTime", 20'000);
    EXPECT_EQ((Bytes{0, 2, 4, 6, 8, 10, 12, 14}), row(0));
    Eth_setFloatValue(camera, "Gain", 20 * std::log10(1.5));
    EXPECT_EQ((Bytes{0, 3, 6, 9, 12, 15, 18, 21}), row(0));
    Eth_setEnumerationValue(camera, "TestPattern", "White");
    EXPECT_EQ(Bytes(8, 0xFF), row(0)) << "saturated";

    Eth_executeCommand(camera, "UserSetLoad");
    Eth_setEnumerationValue(camera, "TestPattern", "GreyHorizontalRamp");
    Eth_setIntegerValue(camera, "Width", 16);
    Eth_setIntegerValue(camera, "OffsetX", 100);
    EXPECT_EQ((Bytes{100, 101, 102, 103, 104, 105, 106, 107}), row(0));
    Eth_setBooleanValue(camera, "ReverseX", 1);
    EXPECT_EQ((Bytes{115, 114, 113, 112, 111, 110, 109, 108}), row(0));
    Eth_setEnumerationValue(camera, "TestPattern", "GreyVerticalRamp");
    Eth_setIntegerValue(camera, "Height", 16);
    Eth_setBooleanValue(camera, "ReverseY", 1);
    EXPECT_EQ(Bytes(8, 15), row(0));
    EXPECT_EQ(Bytes(8, 12), row(3));
}

TEST_F(PicturesByHand, AreCutToTheBoardsPartAndFilledUp)
{
    start(kSmall, "GreyHorizontalRamp");
    Eth_setIntegerValue(camera, "Width", 16);
    Eth_setIntegerValue(camera, "Height", 16);
    setParameter(board, 300, 12);
    setParameter(board, 400, 14);
    EXPECT_EQ((Bytes{12, 13, 14, 15, 0, 0, 0, 0}), row(1));
    EXPECT_EQ(Bytes(8, 0), row(2)) << "below the camera's last row";
}

TEST_F(PicturesByHand, AreConvertedToTheBoardsFormat)
{
    start(R"({"width": 8, "height": 4, "format": 2})", "ColorBar");
    Eth_setIntegerValue(camera, "Width", 16);   // the bars are parts of the sensor, not of the picture
    Eth_setIntegerValue(camera, "OffsetX", 960);
    const Bytes grey = bytes(0, 3);
    EXPECT_EQ((Bytes{grey[0], grey[0], grey[0]}), grey) << "a grey camera on a colour board";
    EXPECT_NE(0, grey[0]);
    Eth_setEnumerationValue(camera, "PixelFormat", "RGB8");
    EXPECT_EQ((Bytes{255, 0, 0}), bytes(0, 3)) << "blue";
}

TEST_F(PicturesByHand, MoveFromPictureToPicture)
{
    start(kSmall, "GreyDiagonalRampMoving");
    const BoardRing& ring = run(board, 0);
    EXPECT_EQ(2, OrvoSim_deliver(0, 0, 2));
    EXPECT_EQ(ring.blocks[0][0] + 1, ring.blocks[1][0]);
}

}   // namespace

}   // namespace orvo::test

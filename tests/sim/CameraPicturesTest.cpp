#include <chrono>
#include <cmath>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/simulator/ExposureSchedule.h"
#include "tests/sim/SimulatedCameras.h"

namespace orvo::test {

namespace {

using Bytes = std::vector<uint8_t>;

constexpr uint64_t kTicksPerSecond = 125'000'000;

/// Boards whose pictures come from cameras.
class CameraPictures : public SimulatedCameras {
protected:
    /// A running DMA with four blocks; nobody gives them back.
    Ring& run(void* board, uint32_t dma, size_t blockSize = 64, size_t blocks = 4)
    {
        m_rings.push_back(std::make_unique<Ring>(board, dma, blocks, blockSize));
        EXPECT_EQ(0, m_rings.back()->start());
        return *m_rings.back();
    }

    static bool delivers(uint32_t board, uint32_t dma, uint64_t count)
    {
        return OrvoSim_waitForDelivered(board, dma, count, kGenerousMs) == 1;
    }

    /// What the wheel delivers next, as 8 by 4 pixels of the format.
    Bytes picture(const Ring& ring, size_t size = 32)
    {
        const int64_t number = ++m_number;
        EXPECT_EQ(1, OrvoSim_deliver(0, 0, 1));
        const int64_t block = ring.blockOf(number);
        const auto* const first =
            reinterpret_cast<const uint8_t*>(ring.block(static_cast<size_t>(block)).data());
        Bytes bytes(first, first + size);
        ring.giveBack(block);
        return bytes;
    }

private:
    std::vector<std::unique_ptr<Ring>> m_rings;
    int64_t m_number = 0;
};

constexpr const char* kSmall = R"({"width": 8, "height": 4, "processes": [{"dmas": 2}]})";

TEST_F(CameraPictures, ComeOnceTheGigEVisionCameraOfItsPortIsStarted)
{
    describeBoards(R"({"boards": [{"index": 0, "type": 2897, "cameras": [{"port": 2}]}]})");
    void* const board = open(0, R"({"width": 8, "height": 4, "processes": [
        {"dmas": 2, "cameraPorts": [{"port": 2, "dma": 1}]}, {"dmas": 1, "cameraPorts": [4, 2]}]})");
    EXPECT_EQ(1u, parameter(board, 3060, 0));
    int32_t word = 1;
    EXPECT_EQ(0, Brd_getParameter(board, 3090, &word, 1));
    EXPECT_EQ(2, word) << "a port beyond the DMAs of its process feeds none";
    run(board, 0);
    run(board, 1);
    run(board, 2);
    const uint64_t camera = connectedEth(2);
    ASSERT_TRUE(delivers(0, 0, 3)) << "the applet's own pictures";
    ASSERT_TRUE(delivers(0, 2, 3)) << "likewise, there is no camera behind port 4";
    EXPECT_EQ(0u, ledger(0, 1).produced) << "connected, not started";
    EXPECT_EQ(0, Eth_startAcquisition(camera));
    EXPECT_TRUE(delivers(0, 1, 1));
}

TEST_F(CameraPictures, KeepTheCamerasRate)
{
    void* const board = open(0, kSmall);
    const uint64_t camera = connectedEth();
    ASSERT_EQ(0, Eth_setFloatValue(camera, "AcquisitionFrameRate", 200));
    ASSERT_EQ(0, Eth_startAcquisition(camera));
    const Ring& fast = run(board, 0);
    ASSERT_TRUE(delivers(0, 0, 4));
    EXPECT_EQ(3 * kTicksPerSecond / 100, fast.timestampOf(4) - fast.timestampOf(1))
        << "no more than an exposure of 10 ms leaves room for";
    EXPECT_EQ(100, ledger(0, 0).askedRate);
    fast.stop();

    Eth_setFloatValue(camera, "ExposureTime", 1'000);
    const Ring& faster = run(board, 0);
    ASSERT_TRUE(delivers(0, 0, 8));
    EXPECT_EQ(3 * kTicksPerSecond / 200, faster.timestampOf(4) - faster.timestampOf(1));
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

TEST_F(CameraPictures, ComeOneATriggerBySoftwareAsLongAsTheCameraIsThere)
{
    void* const board = open(0, kSmall);
    run(board, 0, 64, 8);
    const uint64_t camera = connectedEth();
    Eth_setEnumerationValue(camera, "TriggerMode", "On");
    EXPECT_EQ(0, Eth_executeCommand(camera, "TriggerSoftware")) << "not started: lost";
    Eth_startAcquisition(camera);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(0, Eth_executeCommand(camera, "TriggerSoftware"));
    EXPECT_TRUE(delivers(0, 0, 3));
    Eth_setEnumerationValue(camera, "TriggerSource", "Line0");
    EXPECT_EQ(0, Eth_executeCommand(camera, "TriggerSoftware")) << "goes nowhere";
    Eth_setEnumerationValue(camera, "TriggerSource", "Software");
    EXPECT_EQ(0, Eth_executeCommand(camera, "TriggerSoftware"));
    EXPECT_TRUE(delivers(0, 0, 4));
    ASSERT_EQ(1, OrvoSim_vanishCamera(0, 0, 0));
    EXPECT_EQ(code(CameraStatus::Gone), Eth_executeCommand(camera, "TriggerSoftware"));
    EXPECT_EQ(4u, ledger(0, 0).produced);
}

TEST_F(CameraPictures, ComeFromTheCamerasThatAnActionCommandIsFor)
{
    describeBoards(R"({"boards": [{"index": 0, "type": 2897, "cameras": [
        {"port": 0, "parameters": {"TriggerMode": "On"}}, {"port": 1, "parameters": {"TriggerMode": "On"}},
        {"port": 2, "parameters": {"TriggerMode": "On"}}]}]})");
    void* const board = open(0, R"({"width": 8, "height": 4, "processes": [{"dmas": 3}]})");
    const uint64_t library = openEth();
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
        ASSERT_TRUE(delivers(0, dma, pictures[dma]));
        EXPECT_EQ(pictures[dma], ledger(0, dma).produced) << "DMA " << dma;
    }
}

TEST_F(CameraPictures, ObeyTheParameters)
{
    OrvoSim_setManual(1);
    void* const board = open(0, kSmall);
    const Ring& ring = run(board, 0);
    const uint64_t camera = connectedEth();
    Eth_setEnumerationValue(camera, "TestPattern", "GreyHorizontalRamp");
    const auto row = [&](size_t y) {
        const Bytes all = picture(ring);
        const auto begin = all.begin() + static_cast<std::ptrdiff_t>(8 * y);
        return Bytes(begin, begin + 8);
    };
    EXPECT_EQ((Bytes{0, 1, 2, 3, 4, 5, 6, 7}), row(3));
    Eth_setFloatValue(camera, "ExposureTime", 20'000);
    EXPECT_EQ((Bytes{0, 2, 4, 6, 8, 10, 12, 14}), row(0));
    Eth_setFloatValue(camera, "Gain", 20 * std::log10(1.5));
    EXPECT_EQ((Bytes{0, 3, 6, 9, 12, 15, 18, 21}), row(0));
    Eth_setFloatValue(camera, "Gain", 24);
    EXPECT_EQ(0xFF, (Eth_setEnumerationValue(camera, "TestPattern", "White"), row(0)[0])) << "saturated";

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
    Eth_setEnumerationValue(camera, "TestPattern", "GreyDiagonalRampMoving");
    const Bytes before = row(0);
    EXPECT_EQ(before[0] + 1, row(0)[0]);
}

TEST_F(CameraPictures, AreCutToTheBoardsPartAndFilledUp)
{
    OrvoSim_setManual(1);
    void* const board = open(0, kSmall);
    const uint64_t camera = connectedEth();
    Eth_setEnumerationValue(camera, "TestPattern", "GreyHorizontalRamp");
    Eth_setIntegerValue(camera, "Width", 16);
    Eth_setIntegerValue(camera, "Height", 16);
    const uint32_t xOffset = 12, yOffset = 14;
    Brd_setParameter(board, 300, &xOffset, 0);
    Brd_setParameter(board, 400, &yOffset, 0);
    const Ring& ring = run(board, 0);
    const Bytes bytes = picture(ring);
    EXPECT_EQ((Bytes{12, 13, 14, 15, 0, 0, 0, 0}), Bytes(bytes.begin() + 8, bytes.begin() + 16));
    EXPECT_EQ(Bytes(16, 0), Bytes(bytes.begin() + 16, bytes.end())) << "below the camera's last row";
}

TEST_F(CameraPictures, AreConvertedToTheBoardsFormat)
{
    OrvoSim_setManual(1);
    void* const board = open(0, R"({"width": 8, "height": 4, "format": 2})");
    const uint64_t camera = connectedEth();
    Eth_setIntegerValue(camera, "Width", 16);   // the bars are parts of the sensor, not of the picture
    Eth_setIntegerValue(camera, "OffsetX", 960);
    Eth_setEnumerationValue(camera, "TestPattern", "ColorBar");
    const Ring& ring = run(board, 0, 96);
    const Bytes grey = picture(ring, 3);
    EXPECT_EQ((Bytes{grey[0], grey[0], grey[0]}), grey) << "a grey camera on a colour board";
    EXPECT_NE(0, grey[0]);
    Eth_setEnumerationValue(camera, "PixelFormat", "RGB8");
    EXPECT_EQ((Bytes{255, 0, 0}), picture(ring, 3)) << "blue";
}

}   // namespace

}   // namespace orvo::test

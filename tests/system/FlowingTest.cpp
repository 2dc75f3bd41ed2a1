#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include "tests/system/CameraTest.h"

namespace orvo::test {

namespace {

/// Two channels of one process whose pictures come by themselves, as fast as the ring allows.
class Flowing : public SystemTest {
protected:
    static constexpr uint32_t kWidth = 16;
    static constexpr uint32_t kHeight = 8;
    static constexpr size_t kImageSize = size_t{kWidth} * kHeight;
    static constexpr uint32_t kGenerousMs = 30'000;

    Flowing()
    {
        OrvoSim_setManual(0);
        OrvoSim_limitJournal(0);
        json process = Machine::process({Machine::dma(0), Machine::dma(1)});
        for (json& dma : process["dmas"])
            dma.update({{"picturesPerSecond", 0}, {"source", "numbers"}});
        machine.oneBoard(process);
    }

    void startBoth()
    {
        first = host.opened(0);
        second = host.opened(1);
        ASSERT_EQ(host.setup(first, kWidth, kHeight), done());
        ASSERT_EQ(host.setup(second, kWidth, kHeight), done());
        ASSERT_EQ(host.start(first), done());
    }

    int64_t first = 0;
    int64_t second = 0;
};

TEST_F(Flowing, TheLastReleaseIsSafeAHundredTimes)
{
    for (int life = 0; life < 100; ++life) {
        startBoth();
        ASSERT_EQ(OrvoSim_waitForDelivered(0, 1, 2, kGenerousMs), 1);
        ASSERT_EQ(host.release(first), done());
        ASSERT_EQ(host.release(second), done());
    }
}

TEST_F(Flowing, HostThreadsFetchEveryPictureInItsOrderFromTheirOwnChannel)
{
    constexpr uint64_t kPictures = 500;
    startBoth();
    const auto inOrder = [&](int64_t id) {
        Host own(adapter);
        std::array<unsigned char, kImageSize> memory{};
        uint64_t last = 0;
        bool rising = true;
        for (uint64_t fetched = 0; fetched < kPictures;) {
            const Answer answer = own.getImage(id, memory.data());
            if (answer == pending())
                continue;
            uint64_t number = 0;
            for (size_t i = 8; i-- > 0;)
                number = number << 8 | memory[i];
            rising = rising && answer == image() && number > last;
            last = number;
            ++fetched;
        }
        return rising;
    };
    std::atomic<bool> secondInOrder = false;
    std::thread other([&] { secondInOrder = inOrder(second); });
    EXPECT_TRUE(inOrder(first));
    other.join();
    EXPECT_TRUE(secondInOrder);
    EXPECT_EQ(host.stop(first), done());
}

TEST_F(Flowing, StopsAndStartsBesideAWaitingThreadAndRebuildsAfterwards)
{
    startBoth();
    std::atomic<bool> over = false;
    std::thread waiting([&] {
        Host own(adapter);
        while (!over)
            EXPECT_THAT(own.waitForIntegration(second),
                        testing::AnyOf(image(), pending(), imageFails("Acquisition is not running")));
    });
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(host.stop(first), done());
        EXPECT_EQ(host.start(first), done());
    }
    over = true;
    waiting.join();
    for (const char* count : {"1", "7", "3"})
        EXPECT_EQ(host.write(first, "BufferCount", count), done());
    host.fetch(first, kImageSize);
    host.fetch(second, kImageSize);
}

TEST_F(CameraTest, BothFamiliesStreamAtOnceWhileTheirParametersChange)
{
    constexpr int kPictures = 200;
    constexpr uint32_t kWidth = 16, kHeight = 8;
    OrvoSim_setManual(0);
    OrvoSim_limitJournal(0);
    std::vector<json> boards;
    for (const auto& family : {kGigEVision, kGenICam}) {
        json camera = cameraAt(0);
        camera["parameters"] = {{"AcquisitionFrameRate", 1000}, {"ExposureTime", 100}};
        boards.push_back(Machine::grabber(static_cast<int>(boards.size()), family.boardType));
        boards.back()["cameras"] = std::vector<json>{camera};
        machine.applet(boards.back()["index"],
                       Machine::appletOf({Machine::process({Machine::dma(0), Machine::dma(1)})}));
    }
    machine.boards(boards);
    struct Board {
        int64_t pictures;     // the channel whose pictures are fetched
        int64_t parameters;   // another one, because a channel's features aren't written beside its pictures
    };
    std::array<Board, 2> opened{};
    for (size_t i = 0; i < opened.size(); ++i) {
        opened[i].pictures = host.opened(static_cast<int32_t>(2 * i));
        opened[i].parameters = host.opened(static_cast<int32_t>(2 * i + 1));
    }
    for (const auto& [pictures, parameters] : opened) {
        ASSERT_EQ(host.setup(pictures, kWidth, kHeight), done());
        ASSERT_EQ(host.execute(parameters, "InitializeCameraConnector"), done());
        ASSERT_EQ(host.execute(parameters, "Detect"), done());
        ASSERT_EQ(host.start(pictures), done());
        ASSERT_EQ(host.execute(parameters, "StartAcquisition"), done());
    }

    std::atomic<int> streaming = 0;
    const auto stream = [&](int64_t channel) {
        Host own(adapter);
        std::array<unsigned char, size_t{kWidth} * kHeight * AIK_MAX_BYTES_PER_PIXEL> memory{};
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(60);
        int fetched = 0;
        while (fetched < kPictures && std::chrono::steady_clock::now() < end) {
            const Answer answer = own.getImage(channel, memory.data());
            EXPECT_THAT(answer, testing::AnyOf(image(), pending()));
            fetched += answer == image();
        }
        EXPECT_EQ(fetched, kPictures);
        --streaming;
    };
    std::vector<std::thread> threads;
    for (const Board& board : opened) {
        ++streaming;
        threads.emplace_back(stream, board.pictures);
    }
    for (int round = 0; streaming > 0; ++round) {
        const char* const gain = round % 2 == 0 ? "12" : "0.5";
        const char* const pattern = round % 3 == 0 ? "GreyDiagonalRampMoving" : "Off";
        for (const Board& board : opened) {
            EXPECT_EQ(host.write(board.parameters, "CameraFeatureKey", "Gain"), done());
            EXPECT_EQ(host.write(board.parameters, "CameraFloatValue", gain), done());
            EXPECT_EQ(host.read(board.parameters, "CameraFloatValue"), gives(gain));
            EXPECT_EQ(host.write(board.parameters, "CameraFeatureKey", "TestPattern"), done());
            EXPECT_EQ(host.write(board.parameters, "CameraEnumerationValue", pattern), done());
        }
    }
    for (std::thread& thread : threads)
        thread.join();
}   // and the host's end releases everything while pictures flow

}   // namespace

}   // namespace orvo::test

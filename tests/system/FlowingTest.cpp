#include <array>
#include <atomic>
#include <chrono>
#include <thread>

#include "tests/system/CameraTest.h"

namespace orvo::test {

namespace {

/// Two channels of one process that produce pictures by themselves, as fast as the ring allows.
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
    for (int session = 0; session < 100; ++session) {
        startBoth();
        ASSERT_EQ(OrvoSim_waitForDelivered(0, 1, 2, kGenerousMs), 1);
        ASSERT_EQ(host.release(first), done());
        ASSERT_EQ(host.release(second), done());
    }
}

TEST_F(Flowing, HostThreadsFetchPicturesInTheirOrderFromTheirOwnChannel)
{
    startBoth();
    const auto fetchInOrder = [](int64_t id) {
        uint64_t last = 0;
        for (int fetched = 0; fetched < 500; ++fetched) {
            const uint64_t number = numberIn(Host::fetch(id, kImageSize));
            EXPECT_GT(number, last);
            last = number;
        }
    };
    std::thread other(fetchInOrder, second);
    fetchInOrder(first);
    other.join();
    EXPECT_EQ(host.stop(first), done());
}

TEST_F(Flowing, StopsAndStartsBesideAWaitingThreadAndRebuildsAfterwards)
{
    startBoth();
    std::atomic<bool> over = false;
    std::thread waiting([&] {
        while (!over)
            EXPECT_THAT(Host::waitForIntegration(second),
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
    OrvoSim_setManual(0);
    OrvoSim_limitJournal(0);
    json camera = cameraAt(0);
    camera["parameters"] = {{"AcquisitionFrameRate", 1000}, {"ExposureTime", 100}};
    describeBothFamilies(camera, {Machine::dma(0), Machine::dma(1)});
    std::atomic<int> streaming = 2;
    std::vector<std::thread> threads;
    std::vector<int64_t> forParameters;   // because a channel's features aren't written beside its pictures
    std::vector<int64_t> channels(4);
    for (int32_t index = 0; index < 4; ++index)   // all, because nothing else may be under way meanwhile
        channels[static_cast<size_t>(index)] = host.opened(index);
    for (const size_t board : {size_t{0}, size_t{2}}) {
        const int64_t forPictures = channels[board];
        forParameters.push_back(channels[board + 1]);
        ASSERT_EQ(host.setup(forPictures, 8, 4), done());
        for (const char* const command : {"InitializeCameraConnector", "Detect"})
            ASSERT_EQ(host.execute(forParameters.back(), command), done());
        ASSERT_EQ(host.start(forPictures), done());
        ASSERT_EQ(host.execute(forParameters.back(), "StartAcquisition"), done());
        threads.emplace_back([&streaming, forPictures] {
            for (int fetched = 0; fetched < 200; ++fetched)
                Host::fetch(forPictures, size_t{8} * 4);
            --streaming;
        });
    }
    for (int round = 0; streaming > 0; ++round) {
        const char* const gain = round % 2 == 0 ? "12" : "0.5";
        for (const int64_t channel : forParameters) {
            EXPECT_EQ(host.write(channel, "CameraFeatureKey", "Gain"), done());
            EXPECT_EQ(host.write(channel, "CameraFloatValue", gain), done());
            EXPECT_EQ(host.read(channel, "CameraFloatValue"), gives(gain));
        }
    }
    for (std::thread& thread : threads)
        thread.join();
}   // and the host's end releases everything while pictures flow

}   // namespace

}   // namespace orvo::test

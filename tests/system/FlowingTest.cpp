#include <array>
#include <atomic>
#include <thread>

#include "tests/system/SystemTest.h"

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

}   // namespace

}   // namespace orvo::test

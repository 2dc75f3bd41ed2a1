// What is the same for all strategies, and what no host can bring about. What the strategies differ in is shown
// through the exports.
#include <future>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AIKException.h"
#include "acquisition/AcquisitionStrategy.h"
#include "acquisition/PixelTransformation.h"
#include "tests/acquisition/ChannelBuffers.h"
#include "tests/support/Failures.h"

namespace orvo::test {

namespace {

using namespace cognex;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr Ticks kShort{1};
constexpr const char* kNoImage = "No image arrived within the given timeout.";

class Acquisition : public ChannelBuffers {
protected:
    Acquisition() { strategy.setCoordinator(coordinator); }

    void arrive(const Numbers& numbers)
    {
        for (const int64_t number : numbers)
            strategy.newBuffer(ring[static_cast<size_t>(number)]);
    }
    std::string failureOfWait()
    {
        return pending([&] { strategy.wait(kShort); });
    }
    std::string failureOfGetImage()
    {
        return pending([&] { strategy.getImage(kShort); });
    }
    /// Acts on another thread while this one holds the lock.
    template <typename Act>
    void whileLocked(Act act)
    {
        const auto access = coordinator->lock();
        std::async(std::launch::async, act).get();
    }

    OldestFirstOverwriteStrategy strategy;
};

TEST_F(Acquisition, TellsTheBoardOfAnOverwrittenBufferBeforeItIsFreeAndOfAFetchedOneAfterwards)
{
    ringOf(2);
    arrive({0, 1});
    EXPECT_THAT(givenBack, ElementsAre(0));
    EXPECT_THAT(freeWhenTold, IsEmpty());
    strategy.wait(kShort);
    strategy.release();
    EXPECT_THAT(givenBack, ElementsAre(0, 1));
    EXPECT_THAT(freeWhenTold, ElementsAre(0, 1));
}

TEST_F(Acquisition, SkipsBuffersThatAreGone)
{
    ringOf(5);
    arrive({0, 1, 2, 3});
    ring[0].reset();
    arrive({4});   // none is free: the oldest goes back
    EXPECT_THAT(givenBack, ElementsAre(1));
    ring[2].reset();
    EXPECT_EQ(strategy.getImage(kShort).lock(), ring[3]);
    ring[3].reset();
    ring[4].reset();
    NewestOnlyStrategy newest;
    newest.setCoordinator(coordinator);
    newest.newBuffer(ring[1]);
    EXPECT_THAT(ready(), ElementsAre(1));
    ring[1].reset();
    EXPECT_EQ(failureOfWait(), kNoImage);
    EXPECT_EQ(failureOfGetImage(), kNoImage);
    strategy.release();
    EXPECT_THAT(givenBack, ElementsAre(1));
    EXPECT_THAT(free(), IsEmpty());
}

TEST_F(Acquisition, TouchesNothingWithoutTheLock)
{
    ringOf(3);
    arrive({0, 1});
    whileLocked([&] {
        EXPECT_EQ(failureOfWait(), kNoImage);
        EXPECT_EQ(failureOfGetImage(), kNoImage);
    });
    EXPECT_THAT(ready(), ElementsAre(0, 1));
    strategy.wait(kShort);
    whileLocked([&] { EXPECT_EQ(failureOfWait(), kNoImage); });
    EXPECT_EQ(strategy.getImage(kShort).lock(), ring[0]);
}

TEST_F(Acquisition, WaitsWithATimeoutThatNoClockCanHold)
{
    ringOf(2);
    auto waiter = std::async(std::launch::async, [this] { strategy.wait(Ticks::max()); });
    EXPECT_EQ(waiter.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
    arrive({0});
    waiter.get();
    EXPECT_EQ(strategy.getImage(Ticks::max()).lock(), ring[0]);

    EXPECT_LT(wrappingDeadlineAfter(Ticks::max()), Ticks::zero());
    const auto time = std::chrono::steady_clock::now();
    EXPECT_LE(timePoint(Ticks::min()), time);
    EXPECT_GT(timePoint(Ticks::max()), time + std::chrono::hours(24 * 365));
}

TEST_F(Acquisition, ReportsTheErrorThatItsStrategyWasGiven)
{
    ringOf(2);
    arrive({0});
    strategy.setErrorCode(-2120);
    EXPECT_EQ(aikFailure([&] { strategy.getImage(kShort); }), "brd error code: -2120");
    strategy.setErrorCode(0);
    EXPECT_EQ(strategy.getImage(kShort).lock(), ring[0]);
}

TEST(Transformations, LeaveOutAnIncompletePixelAndRefuseAnImageThatIsGone)
{
    const auto image = std::make_shared<Buffer>(10);
    std::string("abcdefghij").copy(static_cast<char*>(image->data()), image->size());
    std::string memory(13, '#');
    RGB8PackedToPlanar().transform(memory.data(), image);
    EXPECT_EQ(memory, "cfibehadg####");
    EXPECT_EQ(pending([] { NoTransformation().transform(nullptr, {}); }), kNoImage);
    EXPECT_EQ(pending([] { RGB8PackedToPlanar().transform(nullptr, {}); }), kNoImage);
}

}   // namespace

}   // namespace orvo::test

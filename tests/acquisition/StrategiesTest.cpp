#include <future>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AIKException.h"
#include "acquisition/AcquisitionStrategy.h"
#include "tests/acquisition/buffers/Ring.h"
#include "tests/support/Failures.h"

using namespace orvo;
using namespace orvo::cognex;
using testing::ElementsAre;

namespace {

constexpr Ticks kShort{1};
constexpr const char* kNoImage = "No image arrived within the given timeout.";

/// A ring and a strategy over it: what waiting does, which is the same for all kinds. What they differ in, and
/// what a host sees of it, is shown with a board.
class Wait : public test::Ring {
protected:
    Wait() { strategy.setCoordinator(coordinator); }

    void arrive(const test::Numbers& numbers)
    {
        for (const int64_t number : numbers)
            strategy.newBuffer(ring[static_cast<size_t>(number)]);
    }

    std::string waited()
    {
        return test::pending([&] { strategy.wait(kShort); });
    }

    std::string asked()
    {
        return test::pending([&] { strategy.getImage(kShort); });
    }

    OldestFirstOverwriteStrategy strategy;
};

TEST_F(Wait, FindsNothingInOldEntries)
{
    ringOf(2);
    arrive({0});
    strategy.wait(kShort);
    ring[0].reset();
    EXPECT_EQ(waited(), kNoImage);   // what the host had has gone
    arrive({1});
    ring[1].reset();
    EXPECT_EQ(waited(), kNoImage);
    EXPECT_EQ(asked(), kNoImage);
}

TEST_F(Wait, TouchesNothingWithoutTheLock)
{
    ringOf(3);
    arrive({0, 1});
    {
        const test::LockHolder holder(*coordinator);
        EXPECT_EQ(waited(), kNoImage);
        EXPECT_EQ(asked(), kNoImage);
    }
    EXPECT_THAT(ready(), ElementsAre(0, 1));
    strategy.wait(kShort);
    {
        const test::LockHolder holder(*coordinator);
        EXPECT_EQ(waited(), kNoImage);
    }
    EXPECT_EQ(current(), 0);
}

TEST_F(Wait, LastsWithATimeoutThatFitsNoClock)
{
    ringOf(2);
    auto waiter = std::async(std::launch::async, [this] { strategy.wait(Ticks::max()); });
    EXPECT_EQ(waiter.wait_for(std::chrono::milliseconds(20)), std::future_status::timeout);
    arrive({0});
    waiter.get();
    EXPECT_EQ(strategy.getImage(Ticks::max()).lock(), ring[0]);
}

// The board's errors don't come here yet, so that no export reaches this.
TEST_F(Wait, TellsAnErrorThatTheStrategyWasGiven)
{
    ringOf(2);
    arrive({0});
    strategy.setErrorCode(-2120);
    EXPECT_EQ(test::aikFailure([&] { strategy.getImage(kShort); }), "brd error code: -2120");
    strategy.setErrorCode(0);
    EXPECT_EQ(strategy.getImage(kShort).lock(), ring[0]);
}

}   // namespace

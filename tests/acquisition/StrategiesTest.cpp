#include <future>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AIKException.h"
#include "acquisition/NewestOnlyStrategy.h"
#include "acquisition/OldestFirstOverwriteStrategy.h"
#include "acquisition/OldestFirstStrategy.h"
#include "tests/acquisition/buffers/Ring.h"
#include "tests/support/Failures.h"

using namespace orvo;
using namespace orvo::cognex;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr Ticks kShort{1};
constexpr const char* kNoImage = "No image arrived within the given timeout.";

/// A ring and a strategy over it. Its smallest rings, and what it asks of its port, are shown with a board.
template <typename Strategy>
class Under : public test::Ring {
protected:
    Under() { strategy.setCoordinator(coordinator); }

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

    /// What the host gets until there is no more, each image released before the next.
    test::Numbers fetchesAll()
    {
        test::Numbers fetched;
        while (waited() != kNoImage) {
            fetched.push_back(current());
            strategy.release();
        }
        return fetched;
    }

    Strategy strategy;
};

using NewestOnly = Under<NewestOnlyStrategy>;
using OldestFirst = Under<OldestFirstStrategy>;
using OldestFirstOverwrite = Under<OldestFirstOverwriteStrategy>;

TEST_F(NewestOnly, GivesAllBackThatTheHostHasNotFetched)
{
    ringOf(4);
    arrive({0, 1, 2});
    EXPECT_THAT(givenBack, ElementsAre(0, 1));
    strategy.wait(kShort);
    arrive({3, 0});
    EXPECT_THAT(givenBack, ElementsAre(0, 1, 3));
    EXPECT_THAT(fetchesAll(), ElementsAre(2, 0));
}

TEST_F(OldestFirst, KeepsEveryImageAndIgnoresOneWithoutAFreeBuffer)
{
    ringOf(2);
    arrive({0, 1, 0});
    EXPECT_THAT(givenBack, IsEmpty());
    EXPECT_THAT(fetchesAll(), ElementsAre(0, 1));
}

TEST_F(OldestFirstOverwrite, KeepsOneBufferFreeForTheBoard)
{
    ringOf(3);
    arrive({0, 1});
    EXPECT_THAT(givenBack, IsEmpty());
    arrive({2});
    EXPECT_THAT(givenBack, ElementsAre(0));
    EXPECT_THAT(free(), ElementsAre(0));
    strategy.wait(kShort);
    arrive({0});
    EXPECT_THAT(givenBack, ElementsAre(0, 2));
    EXPECT_THAT(fetchesAll(), ElementsAre(1, 0));
}

using Wait = OldestFirstOverwrite;   // the same for all kinds

TEST_F(Wait, LeavesTheHostItsImage)
{
    ringOf(3);
    arrive({0, 1});
    strategy.wait(kShort);
    strategy.wait(kShort);
    EXPECT_EQ(strategy.getImage(kShort).lock(), ring[0]);
    EXPECT_THAT(ready(), ElementsAre(1));
}

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

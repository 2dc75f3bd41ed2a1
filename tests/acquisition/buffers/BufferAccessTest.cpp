#include "acquisition/buffers/BufferCoordinator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/acquisition/buffers/Ring.h"

using namespace orvo;
using namespace orvo::cognex;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Moves : public test::Ring {
protected:
    void publish(const test::Numbers& numbers)
    {
        for (const int64_t number : numbers)
            coordinator->lock().publish(ring[static_cast<size_t>(number)]);
    }
};

TEST_F(Moves, TellTheBoardBeforeTheQueueOfReadyBuffersOnly)
{
    ringOf(1);
    publish({0});
    coordinator->lock().recycleOldestReady();
    EXPECT_TRUE(wasToldBeforeTheQueue);
    publish({0});
    coordinator->lock().takeOldestReady();
    coordinator->lock().releaseCurrent();
    EXPECT_FALSE(wasToldBeforeTheQueue);
}

TEST_F(Moves, DropEntriesOfBuffersThatHaveGone)
{
    ringOf(5);
    publish({0, 1, 2, 3, 4});
    ring[0].reset();
    coordinator->lock().recycleOldestReady();
    EXPECT_THAT(givenBack, ElementsAre(1));
    ring[2].reset();
    coordinator->lock().takeOldestReady();
    EXPECT_EQ(current(), 3);
    ring[3].reset();
    EXPECT_EQ(current(), -1);
    coordinator->lock().releaseCurrent();
    ring[4].reset();
    coordinator->lock().takeOldestReady();
    coordinator->lock().recycleAllReady();
    EXPECT_THAT(givenBack, ElementsAre(1));
    EXPECT_THAT(free(), ElementsAre(1));
    EXPECT_THAT(ready(), IsEmpty());
}

TEST_F(Moves, AreNotForWhoComesTooLateForTheLock)
{
    const test::LockHolder holder(*coordinator);
    EXPECT_FALSE(coordinator->tryLockUntil(now() + Ticks(1)).holdsLock());
    EXPECT_FALSE(coordinator->tryLockUntil(Ticks::min()).holdsLock());   // the first one took nothing away
}

TEST(Ticks, StayWithinWhatTheyCanHold)
{
    EXPECT_EQ(deadlineAfter(Ticks::max()), Ticks::max());
    EXPECT_EQ(wrappingSum(Ticks::max(), Ticks(1)), Ticks::min());
    const auto time = boost::chrono::system_clock::now();
    EXPECT_GT(timePoint(Ticks::min()), time - boost::chrono::minutes(1));   // no earlier than now
    EXPECT_GT(timePoint(Ticks::max()), time + boost::chrono::hours(24 * 365));
}

}   // namespace

#include <vector>

#include <gtest/gtest.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using Numbers = std::vector<int64_t>;

/// A board whose pictures come when the test says so, with a ring of three blocks.
class HandDrivenRing : public SimulatedBoards {
protected:
    HandDrivenRing()
    {
        OrvoSim_setManual(1);
        EXPECT_EQ(0, ring.start());
    }

    int32_t deliver(uint32_t count) { return OrvoSim_deliver(0, 0, count); }

    void* const board = open(0, R"({"width": 16, "height": 4})");
    Ring ring{board, 0, 3, 64};
};

TEST_F(HandDrivenRing, KeepsItsBlocksBlockedOverStopAndStart)
{
    deliver(2);
    ring.giveBack(0);
    EXPECT_EQ(0, ring.stop());
    EXPECT_EQ(0, ring.blockOf(1)) << "pictures can be found after the stop";
    EXPECT_EQ(0, ring.start());
    EXPECT_EQ(-1, ring.blockOf(1)) << "but are counted anew from the start";

    EXPECT_EQ(2, deliver(3));
    EXPECT_EQ((Numbers{2, 0}), (Numbers{ring.blockOf(1), ring.blockOf(2)}));
    EXPECT_EQ(1, ring.lost());
    ring.giveBack(1);
    EXPECT_EQ(1, deliver(1)) << "a block of the former run can be given back";

    ring.stop();
    EXPECT_EQ(1, ring.lost());
    ring.start();
    EXPECT_EQ(0, ring.lost());
}

TEST_F(HandDrivenRing, DoesNotChangeWhileItIsUsed)
{
    EXPECT_GT(0, ring.start());
    EXPECT_GT(0, Brd_AcquireEx(board, 1, -1, 2, ring.head())) << "the other DMA has no share in it";
    EXPECT_GT(0, Brd_DelMem(board, ring.head(), 0));
    EXPECT_GT(0, Brd_FreeMemHead(board, ring.head()));
    EXPECT_EQ(3, deliver(3));
    EXPECT_EQ(0, ring.stop());
    EXPECT_EQ(0, Brd_DelMem(board, ring.head(), 0));
    EXPECT_EQ(0, Brd_FreeMemHead(board, ring.head()));
    EXPECT_GT(0, Brd_FreeMemHead(board, ring.head())) << "and there is none any more";
    EXPECT_EQ(-1, ring.blockOf(1));
    EXPECT_EQ("This is no memory head of the board", lastError(board));
}

TEST_F(HandDrivenRing, WritesNoByteBehindASmallBlock)
{
    const Ring small(board, 1, 1, 10);
    EXPECT_EQ(0, small.start());
    EXPECT_EQ(1, OrvoSim_deliver(0, 1, 1));
    deliver(1);
    for (size_t i = 0; i < 10; ++i)
        EXPECT_EQ(ring.byte(0, i), small.byte(0, i));
}

}   // namespace

}   // namespace orvo::test

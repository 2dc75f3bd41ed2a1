#include <vector>

#include <gmock/gmock.h>
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
        ring.listen(recorder);
        EXPECT_EQ(0, ring.start());
    }

    int32_t deliver(uint32_t count) { return OrvoSim_deliver(0, 0, count); }

    void* const board = open(0, R"({"width": 16, "height": 4})");
    PictureRecorder recorder;
    Ring ring{board, 0, 3, 64};
};

TEST_F(HandDrivenRing, IsFilledInOrderAndOnlyWhereItIsFree)
{
    EXPECT_EQ(3, deliver(3));
    EXPECT_EQ((Numbers{0, 1, 2}), (Numbers{ring.blockOf(1), ring.blockOf(2), ring.blockOf(3)}));

    EXPECT_EQ(0, deliver(2));
    EXPECT_EQ(2, ring.lost());

    ring.giveBack(1);
    EXPECT_EQ(1, ring.free());
    EXPECT_EQ(1, deliver(2));
    EXPECT_EQ(1, ring.blockOf(4)) << "a dropped picture uses up no number";
    EXPECT_EQ(3, ring.lost());

    ring.giveBack(2);
    ring.giveBack(0);
    EXPECT_EQ(2, deliver(2));
    EXPECT_EQ((Numbers{2, 0}), (Numbers{ring.blockOf(5), ring.blockOf(6)})) << "on behind the last filled";
    EXPECT_EQ((Numbers{1, 2, 3, 4, 5, 6}), recorder.numbers());
}

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

TEST_F(HandDrivenRing, ResolvesAPictureUntilItsBlockIsFilledAgain)
{
    deliver(1);
    EXPECT_EQ(125'000'000u / 30, ring.timestampOf(1)) << "by hand the applet's rate is the clock";
    const int64_t image = Brd_getImageEx(board, 220, 1, 0, 0, ring.head());
    EXPECT_EQ(-1, ring.blockOf(image)) << "an image number is no picture number";
    ring.giveBack(0);
    EXPECT_EQ(0, ring.blockOf(1)) << "given back, and not filled yet";
    deliver(2);
    EXPECT_EQ(0, ring.blockOf(1));
    deliver(1);
    EXPECT_EQ(-1, ring.blockOf(1));
    EXPECT_EQ(0, ring.blockOf(4));

    EXPECT_EQ(-1, ring.blockOf(0));
    EXPECT_EQ(-1, ring.blockOf(99));
    EXPECT_GT(0, Brd_getImageEx(board, 220, 99, 0, 0, ring.head()));
    uint64_t stamp = 7;
    EXPECT_GT(0, Brd_getParameterEx(board, 22030, &stamp, 0, ring.head(), 99));
    EXPECT_EQ(7u, stamp);
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

/// A ring that the test builds itself.
class BareBoard : public SimulatedBoards {
protected:
    void* const board = open(0, R"({"width": 16, "height": 4})");
};

TEST_F(BareBoard, TakesEveryBlockButANullOneThatHasASize)
{
    void* const head = Brd_AllocMemHead(board, 0, 3);
    int unused = 0;
    EXPECT_EQ(0, Brd_AddMem(board, nullptr, 0, 0, head));
    EXPECT_EQ(1, Brd_AddMem(board, &unused, 0, 1, head)) << "the result is the block's index";
    EXPECT_GT(0, Brd_AddMem(board, nullptr, 1, 2, head));
    EXPECT_GT(0, Brd_AddMem(board, &unused, 0, 1, head)) << "there is one of this index";
    EXPECT_GT(0, Brd_AddMem(board, &unused, 0, 3, head)) << "the head is for three";
    EXPECT_GT(0, Brd_AddMem(board, &unused, 0, -1, head));
    EXPECT_GT(0, Brd_AddMem(board, &unused, 0, 0, nullptr));

    OrvoSim_setManual(1);
    EXPECT_EQ(0, Brd_AcquireEx(board, 0, -1, 2, head));
    EXPECT_EQ(2, OrvoSim_deliver(0, 0, 3)) << "pictures without bytes";
}

TEST_F(BareBoard, WritesNoByteBehindASmallBlock)
{
    OrvoSim_setManual(1);
    const Ring ring(board, 0, 1, 64);
    const Ring small(board, 1, 1, 10);
    ring.start();
    small.start();
    OrvoSim_deliver(0, 0, 1);
    OrvoSim_deliver(0, 1, 1);
    for (size_t i = 0; i < 10; ++i)
        EXPECT_EQ(ring.byte(0, i), small.byte(0, i));
}

}   // namespace

}   // namespace orvo::test

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <thread>

#include <gmock/gmock.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;
using Numbers = std::vector<int64_t>;

/// A running ring of three blocks whose pictures come when the test says so.
class HandDrivenRing : public SimulatedBoards {
protected:
    HandDrivenRing()
    {
        OrvoSim_setManual(1);
        EXPECT_EQ(0, ring.start());
    }

    static int32_t deliver(uint32_t count) { return OrvoSim_deliver(0, 0, count); }
    void* const board = open(0, R"({"width": 16, "height": 4})");
    BoardRing ring{board, 0, 3, 64};
};

TEST_F(HandDrivenRing, KeepsItsBlocksBlockedOverStopAndStart)
{
    deliver(2);
    ring.giveBack(0);
    ring.stop();
    EXPECT_EQ(0, ring.blockOf(1)) << "pictures can be found after the stop";
    ring.start();
    EXPECT_EQ(-1, ring.blockOf(1)) << "but are counted anew from the start";
    EXPECT_EQ(2, deliver(3));
    EXPECT_EQ((Numbers{2, 0}), (Numbers{ring.blockOf(1), ring.blockOf(2)}));
    ring.giveBack(1);
    EXPECT_EQ(1, deliver(1)) << "a block of the former run can be given back";
    EXPECT_EQ(1, ring.lost());
}

TEST_F(HandDrivenRing, DoesNotChangeWhileItIsUsed)
{
    EXPECT_GT(0, ring.start());
    EXPECT_GT(0, Brd_AcquireEx(board, 1, -1, 2, ring.head)) << "the other DMA has no share in it";
    for (const int32_t refused : {Brd_DelMem(board, ring.head, 0), Brd_FreeMemHead(board, ring.head)})
        EXPECT_GT(0, refused);
    EXPECT_EQ(3, deliver(3));
    ring.stop();
    EXPECT_EQ(0, Brd_FreeMemHead(board, ring.head));
    EXPECT_GT(0, Brd_FreeMemHead(board, ring.head));
}

TEST_F(HandDrivenRing, WritesNoByteAfterTheEndOfASmallBlock)
{
    const BoardRing small(board, 1, 2, 10);
    small.start(1);
    EXPECT_EQ(1, OrvoSim_deliver(0, 1, 2)) << "the run ends with its last picture";
    deliver(1);
    EXPECT_THAT(small.blocks[0], testing::ElementsAreArray(ring.blocks[0].data(), 10));
}

constexpr const char* kFreeRunning = R"({"width": 16, "height": 4, "picturesPerSecond": 0})";
constexpr const char* kTwoHundredASecond = R"({"width": 16, "height": 4, "picturesPerSecond": 200})";

using FlowingRing = SimulatedBoards;

/// Notes that the thread that owns it has ended, and slows that end: a stop that doesn't wait overtakes it.
struct EndOfThread {
    ~EndOfThread()
    {
        std::this_thread::sleep_for(milliseconds(20));
        s_hasCome = true;
    }
    static inline std::atomic<bool> s_hasCome{false};
};

TEST_F(FlowingRing, StopsWithItsThreadAndAfterACallbackThatMayCallTheLibraryMeanwhile)
{
    BoardRing ring(open(0, kFreeRunning), 0, 4, 64);
    std::atomic<int64_t> block{-2}, blockBeforeStop{-2};
    std::atomic<bool> hadEnded{false};
    ring.listen([&](int64_t picture) {
        [[maybe_unused]] static thread_local const EndOfThread end;
        block = ring.blockOf(picture);   // held until the stop waits
        ring.giveBack(0);
    });
    OrvoSim_hold("Brd_getImagePtrEx", 1, ORVO_SIM_AT_ENTRY);
    ring.start();
    ASSERT_TRUE(OrvoSim_waitUntilHeld("Brd_getImagePtrEx", kGenerousMs));
    std::thread stopper([&] {
        ring.stop();
        blockBeforeStop = block.load();
        hadEnded = EndOfThread::s_hasCome.load();
    });
    EXPECT_EQ(3, ring.free()) << "other threads are not shut out";
    OrvoSim_letGo("Brd_getImagePtrEx");
    stopper.join();
    EXPECT_LE(0, blockBeforeStop);
    EXPECT_TRUE(hadEnded);
}

TEST_F(FlowingRing, DropsWhatFindsNoBlockAtARateOnly)
{
    void* const board = open(0, kFreeRunning);
    const BoardRing waiting(board, 0, 2, 64);
    waiting.start();
    EXPECT_TRUE(waitForDelivered(2));
    waiting.giveBack(0);
    EXPECT_TRUE(waitForDelivered(3));
    waiting.stop();
    EXPECT_EQ(0, waiting.lost());
    Brd_FreeGrabber(board);
    const BoardRing dropping(open(0, kTwoHundredASecond), 1, 2, 64);
    dropping.start();
    for (const auto end = Clock::now() + milliseconds(kGenerousMs);
         dropping.lost() == 0 && Clock::now() < end;)
        std::this_thread::sleep_for(milliseconds(1));
    dropping.stop();
    EXPECT_LT(0, dropping.lost());
    const OrvoSim_Ledger numbers = ledger(1);
    EXPECT_EQ(static_cast<uint64_t>(dropping.lost()), numbers.droppedNoBlock);
    EXPECT_EQ(numbers.produced, 2 + numbers.droppedNoBlock);
}

TEST_F(FlowingRing, KeepsToItsScheduleAndNeverRunsAheadOfIt)
{
    const BoardRing ring(open(0, kTwoHundredASecond), 0, 40, 64);
    const Clock::time_point before = Clock::now();
    ring.start();
    EXPECT_TRUE(waitForDelivered(40));
    EXPECT_LE(before + milliseconds(20 + 39 * 5), Clock::now());
    for (int64_t picture = 2; picture <= 40; ++picture)
        EXPECT_LE(std::abs(ring.microsecondsAt(picture) - (picture - 1) * 5'000), 1);
    EXPECT_EQ(200, ledger().askedRate);
}

/// What the boards file makes go wrong.
using Faults = SimulatedBoards;

TEST_F(Faults, JitterPicturesAroundTheirScheduleAndAddNothingUp)
{
    describeBoard(R"("faults": {"jitterMilliseconds": 4, "jitterSeed": 1})");
    const BoardRing ring(open(0, kTwoHundredASecond), 0, 8, 64);
    ring.start();
    ASSERT_TRUE(waitForDelivered(8));
    const int64_t off = std::abs(ring.microsecondsAt(8) - int64_t{7} * 5'000);
    EXPECT_TRUE(off > 1 && off <= 4'001) << off;
}

TEST_F(Faults, DropPicturesAndPutNegativeNumbersInTheirPlace)
{
    describeBoard(R"("faults": {"dropEvery": 3, "negativeEvery": 2, "negativeNumber": -7})");
    OrvoSim_setManual(1);
    BoardRing ring(open(0), 0, 9, 64);
    Numbers numbers;
    ring.listen([&](int64_t number) { numbers.push_back(number); });
    ring.start();
    EXPECT_EQ(3, OrvoSim_deliver(0, 0, 7));
    EXPECT_EQ((Numbers{1, -7, -7, 2, 3}), numbers);
    EXPECT_EQ(6, ring.free());
    EXPECT_EQ(0, ring.lost()) << "no block was wanting";
    EXPECT_EQ(7u, ledger().produced);
    EXPECT_EQ(4u, ledger().droppedByFault);
}

TEST_F(Faults, AreCountedInTheLedgerThatTheSessionLeavesWithItsJournal)
{
    describe(
        R"({"boards": [{"index": 0, "type": 2897}], "ledger": "ledger.json", "journal": "journal.txt"})");
    OrvoSim_setManual(1);
    const BoardRing ring(open(0, R"({"picturesPerSecond": 25})"), 1, 2, 64);
    ring.start();
    OrvoSim_deliver(0, 1, 3);
    endSession();
    json written = json::parse(std::ifstream(machine.folder() / "ledger.json"));
    written["dmas"].at(0).erase("heldRate");
    EXPECT_EQ(written["dmas"].at(0), json::parse(R"({"board": 0, "dma": 1, "runs": 1, "produced": 3,
        "delivered": 2, "droppedNoBlock": 1, "droppedByFault": 0, "askedRate": 25.0})"));
    std::string firstCall;
    std::getline(std::ifstream(machine.folder() / "journal.txt"), firstCall);
    EXPECT_EQ("Brd_InitLibraries directory=null -> 0", firstCall);
}

}   // namespace

}   // namespace orvo::test

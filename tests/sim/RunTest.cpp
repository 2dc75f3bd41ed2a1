#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using Clock = std::chrono::steady_clock;
using Numbers = std::vector<int64_t>;

constexpr std::string_view kFast = R"({"width": 16, "height": 4, "picturesPerSecond": 0})";

/// Boards that deliver by themselves.
using FlowingBoards = SimulatedBoards;

TEST_F(FlowingBoards, CallsNobodyBackAfterAStop)
{
    void* const board = open(0, kFast);
    const Ring ring(board, 0, 4, 64);
    std::atomic<bool> stopped{false};
    std::atomic<int> late{0};
    PictureRecorder recorder([&](int64_t picture) {
        late += stopped;
        ring.giveBack(ring.blockOf(picture));
        late += stopped;
    });
    ring.listen(recorder);
    for (size_t i = 0; i < 20; ++i) {
        const size_t before = recorder.numbers().size();
        stopped = false;
        ASSERT_EQ(0, ring.start());
        ASSERT_TRUE(recorder.waitFor(before + 3));
        ring.stop();
        stopped = true;
    }
    EXPECT_EQ(0, late);
}

TEST_F(FlowingBoards, StopsOnlyWhenTheCallbackHasEndedAndLetsItCallTheLibraryMeanwhile)
{
    void* const board = open(0, kFast);
    const Ring ring(board, 0, 4, 64);
    std::atomic<bool> ended{false};
    std::atomic<int64_t> block{-2};
    PictureRecorder recorder([&](int64_t picture) {
        block = ring.blockOf(picture);   // held here until the stop waits
        ended = true;
    });
    ring.listen(recorder);
    OrvoSim_hold("Brd_getImagePtrEx", 1, ORVO_SIM_AT_ENTRY);
    ring.start(1);
    ASSERT_TRUE(OrvoSim_waitUntilHeld("Brd_getImagePtrEx", kGenerousMs));
    std::atomic<bool> endedBeforeStop{false};
    std::thread stopper([&] {
        ring.stop();
        endedBeforeStop = ended.load();
    });
    EXPECT_EQ(3, ring.free()) << "other threads are not shut out";
    OrvoSim_letGo("Brd_getImagePtrEx");
    stopper.join();
    EXPECT_TRUE(endedBeforeStop);
    EXPECT_EQ(0, block);
}

TEST_F(FlowingBoards, WithoutARateWaitsForABlockInsteadOfDropping)
{
    void* const board = open(0, kFast);
    const Ring ring(board, 0, 2, 64);
    PictureRecorder recorder;
    ring.listen(recorder);
    ring.start();
    EXPECT_TRUE(recorder.waitFor(2));
    ring.giveBack(0);
    EXPECT_TRUE(recorder.waitFor(3));
    ring.stop();
    EXPECT_EQ(0, ring.lost());
    EXPECT_EQ(3u, ledger(0, 0).produced);
}

TEST_F(FlowingBoards, WithARateDropsWhatFindsNoBlock)
{
    void* const board = open(0, R"({"width": 16, "height": 4, "picturesPerSecond": 200})");
    const Ring ring(board, 0, 2, 64);
    PictureRecorder recorder;
    ring.listen(recorder);
    ring.start();
    EXPECT_TRUE(recorder.waitFor(2));
    while (ring.lost() == 0)
        std::this_thread::yield();
    ring.stop();
    EXPECT_EQ((Numbers{1, 2}), recorder.numbers());
    const OrvoSim_Ledger numbers = ledger(0, 0);
    EXPECT_EQ(static_cast<uint64_t>(ring.lost()), numbers.droppedNoBlock);
    EXPECT_EQ(numbers.produced, numbers.delivered + numbers.droppedNoBlock);
}

TEST_F(FlowingBoards, KeepASchedulesDistancesAndNeverRunAheadOfIt)
{
    void* const board = open(0, R"({"width": 16, "height": 4, "picturesPerSecond": 200})");
    const Ring ring(board, 0, 40, 64);
    PictureRecorder recorder;
    ring.listen(recorder);
    const Clock::time_point before = Clock::now();
    ring.start();
    EXPECT_TRUE(OrvoSim_waitForDelivered(0, 0, 40, kGenerousMs));
    EXPECT_LE(before + std::chrono::milliseconds(20 + 39 * 5), Clock::now());
    ring.stop();
    constexpr uint64_t kTicks = 125'000'000 / 200;
    const uint64_t first = ring.timestampOf(1);
    for (uint64_t picture = 2; picture <= 40; ++picture)
        EXPECT_NEAR(static_cast<double>((picture - 1) * kTicks),
                    static_cast<double>(ring.timestampOf(static_cast<int64_t>(picture)) - first), 1)
            << "picture " << picture;
    EXPECT_EQ(200, ledger(0, 0).askedRate);
    EXPECT_GT(ledger(0, 0).heldRate, 0);
}

}   // namespace

}   // namespace orvo::test

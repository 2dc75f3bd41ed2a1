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

TEST_F(FlowingBoards, LetsTheFirstPictureWaitForOnePictureTimeAndTwentyMilliseconds)
{
    const struct {
        const char* applet;
        std::chrono::milliseconds atLeast;
    } cases[] = {
        {R"({"width": 16, "height": 4, "picturesPerSecond": 0})", std::chrono::milliseconds(20)},
        {R"({"width": 16, "height": 4, "picturesPerSecond": 100000})", std::chrono::milliseconds(20)},
        {R"({"width": 16, "height": 4, "picturesPerSecond": 10})", std::chrono::milliseconds(100)},
    };
    for (const auto& [applet, atLeast] : cases) {
        void* const board = open(0, applet);
        const Ring ring(board, 0, 2, 64);
        PictureRecorder recorder;
        ring.listen(recorder);
        const Clock::time_point before = Clock::now();
        ring.start();
        EXPECT_TRUE(recorder.waitFor(1));
        EXPECT_LE(before + atLeast, Clock::now()) << applet;
        EXPECT_EQ(0, Brd_FreeGrabber(board));
    }
}

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

TEST_F(FlowingBoards, MayBeStoppedAndStartedAgainFromInsideItsCallback)
{
    void* const board = open(0, kFast);
    const Ring ring(board, 0, 8, 64);
    std::vector<int32_t> statuses;
    PictureRecorder recorder([&](int64_t picture) {
        if (picture == 2) {
            statuses.push_back(ring.stop());
            if (statuses.size() == 1)
                statuses.push_back(ring.start());
        }
    });
    ring.listen(recorder);
    ring.start();
    EXPECT_TRUE(recorder.waitFor(4));
    ring.stop();
    EXPECT_EQ((std::vector<int32_t>{0, 0, 0}), statuses);
    EXPECT_EQ((Numbers{1, 2, 1, 2}), recorder.numbers());
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

TEST_F(FlowingBoards, KeepsTheCallbacksOfOneDmaApartAlsoBesideTheWheel)
{
    void* const board = open(0, kFast);
    const Ring ring(board, 0, 4, 64);
    std::atomic<int> inside{0}, overlaps{0};
    PictureRecorder recorder([&](int64_t picture) {
        overlaps += inside++ > 0;
        ring.giveBack(ring.blockOf(picture));
        --inside;
    });
    ring.listen(recorder);
    ring.start();
    EXPECT_EQ(200, OrvoSim_deliver(0, 0, 200));
    EXPECT_TRUE(OrvoSim_waitForDelivered(0, 0, 300, kGenerousMs));
    ring.stop();
    EXPECT_EQ(0, overlaps);
    for (size_t i = 0; i < recorder.numbers().size(); ++i)
        ASSERT_EQ(static_cast<int64_t>(i + 1), recorder.numbers()[i]);
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

TEST_F(FlowingBoards, EndsByItselfAfterItsPictureCount)
{
    void* const board = open(0, kFast);
    const Ring ring(board, 0, 8, 64);
    PictureRecorder recorder;
    ring.listen(recorder);
    ring.start(3);
    EXPECT_TRUE(OrvoSim_waitForDelivered(0, 0, 3, kGenerousMs));
    EXPECT_EQ(0, OrvoSim_deliver(0, 0, 1));
    EXPECT_GT(0, ring.start()) << "it counts as running until it is stopped";
    EXPECT_EQ(0, ring.stop());
    EXPECT_EQ((Numbers{1, 2, 3}), recorder.numbers());
}

TEST_F(FlowingBoards, EndsWithItsBoardAndWithItsLibrary)
{
    for (const bool byLibrary : {false, true}) {
        void* const board = open(1, kFast);
        const Ring ring(board, 0, 2, 192);
        PictureRecorder recorder([&](int64_t picture) { ring.giveBack(ring.blockOf(picture)); });
        ring.listen(recorder);
        ring.start();
        EXPECT_TRUE(recorder.waitFor(5));
        if (byLibrary)
            endLife();
        else
            EXPECT_EQ(0, Brd_FreeGrabber(board));
        const size_t atTheEnd = recorder.numbers().size();
        EXPECT_GT(0, ring.start()) << "the handle has ended";
        EXPECT_EQ(atTheEnd, recorder.numbers().size());
    }
}

}   // namespace

}   // namespace orvo::test

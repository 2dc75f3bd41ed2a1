#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using Numbers = std::vector<int64_t>;

/// What the boards file makes go wrong.
class Faults : public SimulatedBoards {
protected:
    void describeFaults(const std::string& faults)
    {
        describeBoards(R"({"boards": [{"index": 0, "type": 2897, "faults": )" + faults + "}]}");
    }
};

TEST_F(Faults, DropPicturesAndPutNegativeNumbersInTheirPlace)
{
    describeFaults(R"({"dropEvery": 3, "negativeEvery": 2, "negativeNumber": -7})");
    OrvoSim_setManual(1);
    const Ring ring(open(0, "{}"), 0, 9, 64);
    PictureRecorder recorder;
    ring.listen(recorder);
    ring.start();
    EXPECT_EQ(3, OrvoSim_deliver(0, 0, 7));
    EXPECT_EQ((Numbers{1, -7, -7, 2, 3}), recorder.numbers());
    EXPECT_EQ(6, ring.free());
    EXPECT_EQ(0, ring.lost()) << "no block was wanting";
    const OrvoSim_Ledger numbers = ledger(0, 0);
    EXPECT_EQ(7u, numbers.produced);
    EXPECT_EQ(4u, numbers.droppedByFault);
}

TEST_F(Faults, JitterPicturesAroundTheirScheduleAndAddNothingUp)
{
    describeFaults(R"({"jitterMilliseconds": 4, "jitterSeed": 1})");
    void* const board = open(0, R"({"width": 8, "height": 8, "picturesPerSecond": 100})");
    const Ring ring(board, 0, 5, 64);
    ring.start();
    ASSERT_TRUE(OrvoSim_waitForDelivered(0, 0, 5, kGenerousMs));
    bool jitters = false;
    for (int64_t picture = 2; picture <= 5; ++picture) {
        const auto micros = static_cast<int64_t>(ring.timestampOf(picture) - ring.timestampOf(1)) / 125;
        const int64_t late = micros - (picture - 1) * 10'000;
        EXPECT_LE(std::abs(late), 4'001) << "picture " << picture;
        jitters = jitters || std::abs(late) > 1;
    }
    EXPECT_TRUE(jitters);
}

TEST_F(Faults, ScriptCallsFromTheFile)
{
    describeBoards(R"({
        "boards": [{"index": 0, "type": 2897}],
        "script": [{"call": "Brd_AddMem", "nth": 2, "answer": -5},
                   {"call": "Brd_getStatusEx code=40", "slowMilliseconds": 30}]
    })");
    void* const board = open(0, "{}");
    void* const head = Brd_AllocMemHead(board, 2, 2);
    char block = 0;
    EXPECT_EQ(0, Brd_AddMem(board, &block, 1, 0, head));
    EXPECT_EQ(-5, Brd_AddMem(board, &block, 1, 1, head));
    EXPECT_EQ(1, Brd_AddMem(board, &block, 1, 1, head));
    const auto before = std::chrono::steady_clock::now();
    EXPECT_EQ(2, Brd_getStatusEx(board, 40, 0, 0, head));
    EXPECT_LE(before + std::chrono::milliseconds(30), std::chrono::steady_clock::now());

    endLife();
    describeBoards(R"({"boards": [{"index": 0, "type": 2897}]})");
    beginLife();
    EXPECT_NE(-5, Brd_AddMem(nullptr, nullptr, 0, 0, nullptr));
    EXPECT_NE(-5, Brd_AddMem(nullptr, nullptr, 0, 0, nullptr)) << "the rules went with the file";
}

TEST_F(Faults, LeaveLedgerAndJournalBehindAtTheEnd)
{
    describeBoards(
        R"({"boards": [{"index": 0, "type": 2897}], "ledger": "ledger.json", "journal": "journal.txt"})");
    OrvoSim_setManual(1);
    const Ring ring(open(0, R"({"picturesPerSecond": 25})"), 1, 2, 64);
    ring.start();
    OrvoSim_deliver(0, 1, 3);
    endLife();
    const auto content = [&](const char* name) {
        std::ifstream file(machine.folder() / name, std::ios::binary);
        return std::string((std::istreambuf_iterator<char>(file)), {});
    };
    const std::string written = content("ledger.json");
    EXPECT_THAT(written, ::testing::HasSubstr(R"("board": 0,
      "dma": 1,
      "runs": 1,
      "produced": 3,
      "delivered": 2,
      "droppedNoBlock": 1,
      "droppedByFault": 0,
      "askedRate": 25.0,)"));
    std::string read(OrvoSim_writeLedger(nullptr, 0), '\0');
    OrvoSim_writeLedger(read.data(), read.size());
    read.pop_back();
    EXPECT_EQ(written, read);
    EXPECT_THAT(content("journal.txt"), ::testing::StartsWith("Brd_InitLibraries directory=null -> 0\n"));
}

}   // namespace

}   // namespace orvo::test

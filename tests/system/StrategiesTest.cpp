#include <algorithm>
#include <array>
#include <chrono>
#include <functional>

#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using Numbers = std::vector<uint64_t>;

/// A channel whose host chose a strategy and a ring, and started.
class Strategies : public OneChannel {
protected:
    void startWith(const char* strategy, const char* buffers = "5")
    {
        ASSERT_EQ(host.write(id, "AcquisitionStrategy", strategy), done());
        ASSERT_EQ(host.write(id, "BufferCount", buffers), done());
        ASSERT_EQ(host.start(id), done());
        OrvoSim_clearJournal();
    }

    Numbers fetch(size_t count)
    {
        Numbers numbers;
        for (size_t i = 0; i < count; ++i)
            numbers.push_back(fetchNumber());
        return numbers;
    }

    /// The places in the ring, from 1, of the blocks that went back to the board, in their order.
    static Numbers givenBack()
    {
        Numbers places;
        const std::string before = "imageNumber=";
        for (const std::string& line : takeJournal("Brd_setStatusEx"))
            places.push_back(std::stoull(line.substr(line.find(before) + before.size())));
        return places;
    }

    std::array<char, kImageSize> memory{};
};

TEST_F(Strategies, GiveBackWhatTheHostMissesAndKeepTheRest)
{
    struct Row {
        const char* strategy;
        const char* buffers;
        uint32_t delivered;
        Numbers missed;
        Numbers fetched;
    };
    const Row rows[] = {
        {"OldestFirstOverwrite", "3", 3, {1}, {2, 3}},   // the oldest, when no buffer is free
        {"OldestFirstOverwrite", "1", 3, {1, 1, 1}, {}},
        {"NewestOnly", "5", 4, {1, 2, 3}, {4}},
        {"NewestOnly", "1", 1, {}, {1}},
        {"OldestFirst", "5", 2, {}, {1, 2}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.strategy) + ", buffers: " + row.buffers);
        startWith(row.strategy, row.buffers);
        deliver(row.delivered);
        EXPECT_EQ(givenBack(), row.missed);
        EXPECT_EQ(fetch(row.fetched.size()), row.fetched);
        EXPECT_EQ(host.waitForIntegration(id), pending());
        EXPECT_EQ(host.read(id, "FrameCountSinceLastStart"), gives(std::to_string(row.delivered)));
        ASSERT_EQ(host.stop(id), done());
    }
}

TEST_F(Strategies, OldestFirstOverwriteGivesTheNewImageBackWhileTheHostHoldsTheOnlyOther)
{
    startWith("OldestFirstOverwrite", "2");
    deliver(1);
    ASSERT_EQ(host.waitForIntegration(id), image());
    deliver(1);
    EXPECT_EQ(givenBack(), Numbers({2}));
    EXPECT_EQ(fetch(1), Numbers({1}));
    EXPECT_EQ(host.getImage(id, memory.data()), pending());
}

TEST_F(Strategies, OldestFirstKeepsAllAndTellsOfTheLossUntilTheNextStart)
{
    startWith("OldestFirst");
    deliver(5);   // every buffer is ready now, and none is left for the board
    EXPECT_EQ(host.attributes(id), imageFails("Acquisistion is not setup"));
    EXPECT_EQ(OrvoSim_deliver(0, 0, 1), 0);
    EXPECT_EQ(host.attributes(id), imageFails("1 images lost due buffer overflow"));
    EXPECT_EQ(OrvoSim_deliver(0, 0, 2), 0);
    EXPECT_EQ(host.attributes(id), imageFails("3 images lost due buffer overflow"));
    EXPECT_EQ(host.getImage(id, memory.data()), imageFails("3 images lost due buffer overflow"));
    EXPECT_EQ(host.waitForIntegration(id), image());   // a wait never tells of it
    EXPECT_EQ(host.getImage(id, memory.data()), imageFails("3 images lost due buffer overflow"));

    ASSERT_EQ(host.stop(id), done());
    ASSERT_EQ(host.start(id), done());
    OrvoSim_answer("Brd_getStatusEx code=30", 1, -9);
    EXPECT_EQ(host.getImage(id, memory.data()), imageFails("brd error code: -9"));
    EXPECT_EQ(fetch(5), Numbers({1, 2, 3, 4, 5}));   // they have waited over stop and start
}

TEST_F(Strategies, WaitSevenMillisecondsForAnImage)
{
    using Clock = std::chrono::steady_clock;
    using std::chrono::milliseconds;
    startWith("OldestFirstOverwrite");
    const std::function<Answer()> calls[] = {[&] { return host.waitForIntegration(id); },
                                             [&] { return host.attributes(id); },
                                             [&] { return host.getImage(id, memory.data()); }};
    for (const auto& call : calls) {
        std::array<Clock::duration, 9> waits{};
        for (Clock::duration& wait : waits) {
            const auto begin = Clock::now();
            EXPECT_EQ(call(), pending());
            wait = Clock::now() - begin;
        }
        std::sort(waits.begin(), waits.end());
        EXPECT_GT(waits.front(), milliseconds(5));   // clocks differ by a step
        EXPECT_LT(waits[4], milliseconds(50));       // on a busy machine, too
    }
}

TEST_F(Strategies, ImagesStayTheHostsUntilTheyAreFetchedEvenAfterTheStop)
{
    startWith("OldestFirstOverwrite");
    EXPECT_EQ(host.getImage(id, nullptr), imageFails("Pointer to raw memory is not valid"));
    deliver(2);
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(host.waitForIntegration(id), image());
    ASSERT_EQ(host.stop(id), done());
    EXPECT_EQ(host.waitForIntegration(id), imageFails("Acquisition is not running"));
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(host.attributes(id), image());
    EXPECT_EQ(host.getImage(id, nullptr), imageFails("Pointer to raw memory is not valid"));
    EXPECT_EQ(givenBack(), Numbers());
    EXPECT_EQ(fetch(2), Numbers({1, 2}));
    EXPECT_EQ(host.attributes(id), pending());
    EXPECT_EQ(host.getImage(id, memory.data()), pending());
}

TEST_F(Strategies, AnotherStrategyKeepsTheReadyImagesAndIsRefusedWhileRunning)
{
    const auto refused = cannotWrite("This feature cannot be modified during acquisition.");
    startWith("OldestFirst");
    deliver(3);
    EXPECT_EQ(host.write(id, "AcquisitionStrategy", "NewestOnly"), refused);
    EXPECT_EQ(host.write(id, "AcquisitionStrategy", "OldestFirst"), refused);
    EXPECT_EQ(host.write(id, "Transformation", "RGB8PackedToPlanar"), refused);
    EXPECT_EQ(host.read(id, "AcquisitionStrategy"), gives("OldestFirst"));
    EXPECT_EQ(host.read(id, "Transformation"), gives("NoTransformation"));

    ASSERT_EQ(host.stop(id), done());
    ASSERT_EQ(host.write(id, "AcquisitionStrategy", "NewestOnly"), done());
    EXPECT_EQ(fetch(1), Numbers({1}));
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    EXPECT_EQ(fetch(1), Numbers({1}));   // the first of the new run: the two that were left have gone
    EXPECT_EQ(host.getImage(id, memory.data()), pending());
}

}   // namespace

}   // namespace orvo::test

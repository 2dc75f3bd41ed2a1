#include <atomic>
#include <chrono>
#include <future>
#include <thread>

#include "aikctl/adapter/Adapter.h"
#include "aikctl/grab/ChannelGrab.h"
#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

/// Grabs from a channel whose pictures are delivered by hand, and compares its account with the ledger.
class Account : public AikctlTest {
protected:
    Account()
    {
        OrvoSim_setManual(1);
        OrvoSim_limitJournal(0);
        json board = test::Machine::grabber(0);   // without a camera
        board["faults"] = {{"dropEvery", 97}, {"negativeEvery", 61}};
        m_machine.boards({board});
        applet(0, {{"width", 8}, {"height", 4}});
    }

    // Delivers a burst, and waits until the grab has fetched all of it, or at least one picture.
    void deliver(ChannelGrab& grab, uint32_t count, bool isAllFetched)
    {
        const uint64_t before = grab.fetched();
        const auto delivered = static_cast<uint64_t>(OrvoSim_deliver(0, 0, count));
        m_delivered += delivered;
        const uint64_t awaited = isAllFetched ? m_delivered : before + (delivered > 0 ? 1 : 0);
        while (grab.fetched() < awaited && !grab.isDone())
            std::this_thread::yield();
    }

    static OrvoSim_Ledger ledger()
    {
        OrvoSim_Ledger ledger{};
        OrvoSim_readLedger(0, 0, &ledger);
        return ledger;
    }

    static void finish(ChannelGrab& grab)
    {
        grab.askToEnd();
        grab.join();
        grab.stop();
        grab.conclude();
        const GrabAccount& account = grab.result().account;
        EXPECT_EQ(account.fetched, grab.fetched());
        EXPECT_EQ(account.counted,
                  account.fetched + account.skipped + account.leftInRing + account.afterLast);
        EXPECT_EQ(account.counted, ledger().delivered);
    }

    const aik::Adapter m_adapter = loadAdapter(defaultAdapterPath());
    uint64_t m_delivered = 0;
};

TEST_F(Account, AgreesWithTheBoardToThePicture)
{
    for (const std::string strategy : {"OldestFirst", "OldestFirstOverwrite", "NewestOnly"}) {
        SCOPED_TRACE(strategy);
        const bool isLossless = strategy == "OldestFirst";
        m_delivered = 0;
        aik::Channel channel = m_adapter.open(0);
        ChannelGrab grab(channel,
                         {.count = PICTURES * 2, .strategy = strategy, .buffers = isLossless ? 64U : 5U});
        grab.prepare();
        grab.start();
        grab.fetch(nullptr, [] {});
        deliver(grab, 1, true);
        for (uint32_t burst = 1; ledger().produced < PICTURES; burst = burst * 5 % 23)
            deliver(grab, burst, isLossless);
        deliver(grab, 1, isLossless);
        finish(grab);

        const GrabResult& result = grab.result();
        EXPECT_EQ(result.failure, "");
        EXPECT_EQ(result.intervals.lost, ledger().droppedByFault);
        EXPECT_EQ(ledger().droppedNoBlock, 0U);
        EXPECT_EQ(result.account.skipped > 0, !isLossless);
        EXPECT_TRUE(result.hasLost());
    }
}

TEST_F(Account, TellsWhatWasLeftInTheRingFromWhatCameLater)
{
    aik::Channel channel = m_adapter.open(0);
    ChannelGrab grab(channel, {.count = 1, .strategy = "OldestFirst"});
    grab.prepare();
    grab.start();
    OrvoSim_deliver(0, 0, 4);
    grab.fetch(nullptr, [] {});
    grab.join();
    OrvoSim_deliver(0, 0, 1);
    finish(grab);
    EXPECT_EQ(grab.result().account.leftInRing, 3U);
    EXPECT_EQ(grab.result().account.afterLast, 1U);
}

TEST_F(Account, HasAFirstSecondInWhichNothingIsLost)
{
    aik::Channel channel = m_adapter.open(0);
    ChannelGrab grab(channel, {.count = 3, .strategy = "OldestFirst", .isWatched = true});
    grab.prepare();
    grab.start();
    grab.fetch(nullptr, [] {});
    for (int picture = 0; picture < 3; ++picture)
        deliver(grab, 1, true);
    grab.join();
    const GrabSecond second = grab.takeSeconds().front();
    EXPECT_EQ(second.lost, 0U);
    EXPECT_EQ(second.gaps, 0U);
    finish(grab);
}

TEST_F(Account, TellsTheBoardsShareApartUnderOldestFirst)
{
    aik::Channel channel = m_adapter.open(0);
    ChannelGrab grab(channel, {.count = 1000, .strategy = "OldestFirst"});
    grab.prepare();
    grab.start();
    grab.fetch(nullptr, [] {});
    for (int picture = 0; picture < 200; ++picture)
        deliver(grab, 1, true);
    const char* const asking = "Brd_getStatusEx code=30";   // how a fetch begins
    OrvoSim_hold(asking, 1, ORVO_SIM_AT_ENTRY);
    EXPECT_TRUE(OrvoSim_waitUntilHeld(asking, 10'000));
    OrvoSim_deliver(0, 0, 17);   // five find a block
    OrvoSim_letGo(asking);
    while (!grab.isDone())
        std::this_thread::yield();
    finish(grab);

    const GrabResult& result = grab.result();
    EXPECT_EQ(result.failure, "12 images lost due buffer overflow");
    EXPECT_EQ(result.record.lostByOverflow, 12U);
    EXPECT_EQ(result.intervals.lost, ledger().droppedByFault);
    EXPECT_EQ(result.account.leftInRing, 5U);
    EXPECT_EQ(result.account.skipped, 0U);
}

TEST_F(Account, LetsTheStrategyDecideWhatIsLostWhileTheDiskIsSlow)
{
    for (const uint64_t count : {3U, 1U}) {
        SCOPED_TRACE(count);
        m_delivered = 0;
        std::promise<void> mayWrite;
        const auto isReady = mayWrite.get_future().share();
        PictureSaver saver({},
                           {.save =
                                [&](const QueuedPicture& picture, const PictureFile&) {
                                    isReady.wait();
                                    return std::to_string(picture.number);
                                }},
                           1, 1);   // room for a single picture
        aik::Channel channel = m_adapter.open(0);
        ChannelGrab grab(channel, {.count = 3, .strategy = "NewestOnly"});
        grab.prepare();
        grab.start();
        grab.fetch(&saver.queue(), [] {});
        deliver(grab, 1, true);
        using std::chrono::steady_clock;
        for (const auto end = steady_clock::now() + std::chrono::milliseconds(100);
             steady_clock::now() < end;)
            OrvoSim_deliver(0, 0, 1);   // all but the last one are skipped
        if (count == 1) {               // it ends while it waits
            grab.askToEnd();
            grab.join();
        }
        mayWrite.set_value();
        while (grab.fetched() < 2 && !grab.isDone())
            std::this_thread::yield();
        while (!grab.isDone() && OrvoSim_deliver(0, 0, 1) == 0) {   // the faults may have it
        }
        grab.join();
        saver.finish();
        finish(grab);

        EXPECT_EQ(grab.saved().count, count);
        EXPECT_GT(grab.result().account.skipped, 0U);
        EXPECT_EQ(grab.result().bottleneck, Bottleneck::Disk);
        EXPECT_EQ(grab.saved().files.back(), std::to_string(count));
    }
}

TEST(Intervals, AreSteadyOnlyIfAllOfAFewFit)
{
    for (const auto& [longest, lost] : {std::pair(900U, std::optional<uint64_t>(8)), {950U, std::nullopt}}) {
        GrabRecord record;
        record.strategy = "OldestFirst";
        record.fetched = 5;
        for (const uint64_t timestamp : {1000U, 1100U, 1200U, 1300U, 1300U + longest})
            record.addTimestamp(record.timestamps.size() + 1, timestamp);
        EXPECT_EQ(GrabIntervals::of(record).lost, lost);
    }
}

TEST(Queue, ServesALargePictureBeforeSmallOnesThatCameLater)
{
    PictureQueue queue(10);
    std::vector<PictureQueue::Item> small;
    while (small.size() < 10)
        small.push_back(queue.room(1, [] { return false; }));
    std::atomic<bool> isWaiting{false};
    auto large = std::async(std::launch::async, [&] {
        return queue.room(8, [&] {
            isWaiting = true;
            return false;
        });
    });
    while (!isWaiting)
        std::this_thread::yield();
    int served = 0;
    while (small.size() > 3) {
        queue.giveBack(std::move(small.back()));
        small.pop_back();
        if (auto late = queue.room(1, [] { return true; })) {
            ++served;
            queue.giveBack(std::move(late));
        }
    }
    EXPECT_EQ(served, 0);
    queue.giveBack(std::move(small.back()));
    EXPECT_EQ(large.get()->size, 8U);
    queue.giveBack(std::move(small.front()));
    EXPECT_TRUE(queue.room(1, [] { return true; }));   // nobody is in the way any more
}

}   // namespace
}   // namespace orvo::aikctl

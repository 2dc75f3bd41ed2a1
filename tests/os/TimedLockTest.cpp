#include "os/TimedLock.h"

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

namespace orvo::test {

namespace {

// Long enough for a busy machine: who waits that long was forgotten.
constexpr auto kForever = 60s;

os::Deadline after(os::Deadline::duration time)
{
    return std::chrono::steady_clock::now() + time;
}

void runThreads(int count, const std::function<void()>& work)
{
    std::vector<std::jthread> threads;
    threads.reserve(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i)
        threads.emplace_back(work);
}

// Clang's analysis can't follow a lock that a lambda takes.
class TimedLock : public testing::Test {
protected:
    os::TimedLock lock;
};

TEST_F(TimedLock, LosesNoWakeUpAmongManyWaitersBesideOneWhoOnlyLocks)
{
    // One image goes round, and each thread waits until another has had it: one lost wake-up leaves all asleep.
    std::atomic<int64_t> handOvers = 0;
    std::atomic<bool> isOver = false;
    std::atomic<int> forgotten = 0;
    std::thread::id holder;
    std::jthread locker([&]() ORVO_NO_THREAD_SAFETY_ANALYSIS {
        for (int visit = 0; !isOver; ++visit) {
            lock.lock();
            lock.unlock();
            if (visit % 8 == 0)
                std::this_thread::yield();
        }
    });
    runThreads(4, [&]() ORVO_NO_THREAD_SAFETY_ANALYSIS {
        while (!isOver) {
            const os::Deadline deadline = after(kForever);
            lock.lock();
            if (holder == std::this_thread::get_id() && !isOver)
                lock.waitUntil(deadline);
            forgotten += std::chrono::steady_clock::now() >= deadline ? 1 : 0;
            const bool isMine = holder != std::this_thread::get_id();
            holder = std::this_thread::get_id();
            handOvers += isMine ? 1 : 0;
            isOver = isOver || handOvers >= ORVO_HAND_OVERS || forgotten > 0;
            isMine || isOver ? lock.unlockAndWakeOne() : lock.unlock();
        }
    });
    EXPECT_GE(handOvers, ORVO_HAND_OVERS);
    EXPECT_EQ(forgotten, 0);
}

TEST_F(TimedLock, IsHeldByOneOfManyWhoAskWithShortDeadlines)
{
    constexpr int kVisits = 250'000;
    int64_t visits = 0;
    std::atomic<int64_t> counted = 0;
    std::atomic<int64_t> refused = 0;
    runThreads(4, [&]() ORVO_NO_THREAD_SAFETY_ANALYSIS {
        for (int i = 0; i < kVisits; ++i) {
            if (i % 4 == 0)
                lock.lock();
            else if (!lock.tryLockUntil(after(i % 4 * 1us))) {
                ++refused;
                continue;
            }
            ++visits;
            if (i % 64 == 0)
                lock.waitUntil(after(5us));
            ++counted;
            i % 2 == 0 ? lock.unlock() : lock.unlockAndWakeOne();
        }
    });
    EXPECT_EQ(visits, counted);
    EXPECT_EQ(visits + refused, 4 * kVisits);
}

TEST_F(TimedLock, IsRefusedAtTheDeadlineAndKeptInAWaitWhoseDeadlineHasPassed)
{
    const auto ask = [this](os::Deadline deadline) ORVO_NO_THREAD_SAFETY_ANALYSIS {
        bool got = true;
        std::jthread([&]() ORVO_NO_THREAD_SAFETY_ANALYSIS { got = lock.tryLockUntil(deadline); }).join();
        return got;
    };
    lock.lock();
    const os::Deadline deadline = after(10ms);
    EXPECT_FALSE(ask(deadline));
    EXPECT_GE(std::chrono::steady_clock::now(), deadline);
    lock.waitUntil(os::Deadline::min());
    EXPECT_FALSE(ask(os::Deadline::min()));
    lock.unlock();
    EXPECT_TRUE(ask(os::Deadline::min()));   // free: no clock is asked
}

}   // namespace

}   // namespace orvo::test

#include <array>
#include <atomic>
#include <chrono>
#include <future>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "os/Os.h"
#include "templates/platform/Locks.h"

using namespace orvo;
using namespace orvo::templates::platform;
using namespace std::chrono_literals;

namespace {

constexpr int kThreads = 3;
constexpr int kRounds = 500;

TEST(ReadWriteLock, IsSharedByReadersAndGivenToAWaitingWriterBeforeANewReader)
{
    ReadWriteLock lock;
    std::atomic<int> asked = 0;
    std::atomic<int> entered = 0;
    // Asks for the lock on a thread of its own and answers how many were in before. The thread has run up to
    // that point when this returns, so that only the lock can keep it waiting.
    const auto visit = [&](LockMode mode) {
        const int before = asked;
        auto visitor = std::async(std::launch::async, [&, mode] {
            ++asked;
            const ReadWriteLockGuard guard(lock, mode);
            return entered++;
        });
        while (asked == before)
            std::this_thread::yield();
        return visitor;
    };
    std::future<int> writer;
    std::future<int> reader;
    {
        const ReadWriteLockGuard firstReader(lock, LockMode::Read);
        visit(LockMode::Read).get();
        writer = visit(LockMode::Write);
        // Readers get in until the writer is waiting.
        for (int i = 0; i < kRounds; ++i) {
            reader = visit(LockMode::Read);
            if (reader.wait_for(100ms) == std::future_status::timeout)
                break;
        }
        EXPECT_EQ(writer.wait_for(0s), std::future_status::timeout);
    }
    EXPECT_LT(writer.get(), reader.get());
}

TEST(Locks, ExcludeOtherThreadsAndAdmitTheirOwnerAgain)
{
    ReadWriteLock readWrite;
    RecursiveMutex mutex;
    SpinLockVariable plain{0};
    SpinLockVariable owned{0};
    SpinLockVariable owner{0};
    std::array<int, 4> counts{};
    // The analysis knows no lock that its owner may take twice.
    const auto countUnderEach = [&]() ORVO_NO_THREAD_SAFETY_ANALYSIS {
        for (int round = 0; round < kRounds; ++round) {
            {
                const ReadWriteLockGuard guard(readWrite, LockMode::Write);
                const int before = counts[0];
                std::this_thread::yield();   // time for a second writer
                counts[0] = before + 1;
            }
            {
                const RecursiveMutexGuard outer(mutex);
                const RecursiveMutexGuard inner(mutex);
                EXPECT_EQ(mutex.lockCount(), 2);
                ++counts[1];
            }
            {
                const SpinLockVariableGuard guard(plain);
                ++counts[2];
            }
            const SpinLockVariableGuard outer(owned, &owner);
            const auto innerHolds = [&] { return SpinLockVariableGuard(owned, &owner).holdsLock(); };
            EXPECT_FALSE(innerHolds());
            EXPECT_EQ(owner, os::currentThreadId());   // the inner guard gave nothing back
            ++counts[3];
        }
    };
    std::array<std::future<void>, kThreads> threads;
    for (auto& thread : threads)
        thread = std::async(std::launch::async, countUnderEach);
    for (const auto& thread : threads)
        thread.wait();
    EXPECT_THAT(counts, testing::Each(kThreads * kRounds));
    EXPECT_EQ(mutex.lockCount(), 0);
    EXPECT_EQ(owner, 0u);
}

}   // namespace

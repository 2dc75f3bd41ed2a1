#include <array>
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

/// Runs `act` so often, on so many threads at once.
template <typename Act>
void contend(Act act)
{
    std::vector<std::thread> threads;
    threads.reserve(kThreads);
    for (int i = 0; i < kThreads; ++i)
        threads.emplace_back([&] {
            for (int round = 0; round < kRounds; ++round)
                act();
        });
    for (std::thread& thread : threads)
        thread.join();
}

class ReadWrite : public testing::Test {
protected:
    std::future<void> visitor(LockMode mode)
    {
        return std::async(std::launch::async, [this, mode] { const ReadWriteLockGuard guard(m_lock, mode); });
    }

    /// Whether, sooner or later, a reader does not get in.
    bool keepsANewReaderOut()
    {
        const auto end = std::chrono::steady_clock::now() + 30s;
        while (std::chrono::steady_clock::now() < end) {
            m_readers.push_back(visitor(LockMode::Read));
            if (m_readers.back().wait_for(20ms) == std::future_status::timeout)
                return true;
        }
        return false;
    }

    ReadWriteLock m_lock;
    std::vector<std::future<void>> m_readers;
};

TEST_F(ReadWrite, LetsReadersInTogetherUntilAWriterWaits)
{
    std::future<void> writer;
    {
        const ReadWriteLockGuard reader(m_lock, LockMode::Read);
        visitor(LockMode::Read).get();
        writer = visitor(LockMode::Write);
        EXPECT_TRUE(keepsANewReaderOut());
        EXPECT_EQ(writer.wait_for(0s), std::future_status::timeout);
    }
    writer.get();
}

TEST(Locks, ExcludeOtherThreadsAndNotTheirOwner)
{
    ReadWriteLock readWrite;
    RecursiveMutex mutex;
    SpinLockVariable plain{0};
    SpinLockVariable owned{0};
    SpinLockVariable owner{0};
    int underReadWrite = 0;
    int underMutex = 0;
    int underPlain = 0;
    int underOwned = 0;
    contend([&]() ORVO_NO_THREAD_SAFETY_ANALYSIS {   // it knows no lock that its owner may take twice
        {
            const ReadWriteLockGuard guard(readWrite, LockMode::Write);
            ++underReadWrite;
        }
        {
            const ReadWriteLockGuard guard(readWrite, LockMode::Read);
            EXPECT_GT(underReadWrite, 0);
        }
        {
            const RecursiveMutexGuard outer(mutex);
            const RecursiveMutexGuard inner(mutex);
            EXPECT_EQ(mutex.lockCount(), 2);
            ++underMutex;
        }
        {
            const SpinLockVariableGuard guard(plain);
            ++underPlain;
        }
        const SpinLockVariableGuard outer(owned, &owner);
        const SpinLockVariableGuard inner(owned, &owner);
        ++underOwned;
    });
    EXPECT_THAT((std::array{underReadWrite, underMutex, underPlain, underOwned}),
                testing::Each(kThreads * kRounds));
    EXPECT_EQ(mutex.lockCount(), 0);
}

TEST(SpinLock, AnInnerGuardTakesNothingAndGivesNothingBack)
{
    SpinLockVariable lock{0};
    SpinLockVariable owner{0};
    {
        const SpinLockVariableGuard outer(lock, &owner);
        EXPECT_TRUE(outer.holdsLock());
        const auto innerHolds = [&] { return SpinLockVariableGuard(lock, &owner).holdsLock(); };
        EXPECT_FALSE(innerHolds());
        EXPECT_EQ(lock, 1u);
        EXPECT_EQ(owner, os::currentThreadId());
    }
    EXPECT_EQ(lock, 0u);
    EXPECT_EQ(owner, 0u);
}

}   // namespace

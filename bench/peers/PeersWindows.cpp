#include <windows.h>

#include "bench/peers/Peers.h"

namespace orvo::bench {

namespace {

class SlimLock {
public:
    void lock() { AcquireSRWLockExclusive(&m_lock); }
    void unlock() { ReleaseSRWLockExclusive(&m_lock); }
    SRWLOCK* get() { return &m_lock; }

private:
    SRWLOCK m_lock = SRWLOCK_INIT;
};

class SlimCondition {
public:
    void notifyOne() { WakeConditionVariable(&m_condition); }
    void wait(SlimLock& lock) { SleepConditionVariableSRW(&m_condition, lock.get(), INFINITE, 0); }

private:
    CONDITION_VARIABLE m_condition = CONDITION_VARIABLE_INIT;
};

}   // namespace

std::vector<HandOff> handOffPeers()
{
    return {handOffOver<SlimLock, SlimCondition>("SRWLOCK, CONDITION_VARIABLE"),
            handOffOver<std::mutex, StandardCondition>("std::mutex, condition")};
}

std::vector<Split> splitPeers()
{
    return {};
}

std::vector<Flow> flowPeers(uint32_t /*side*/)
{
    return {};
}

}   // namespace orvo::bench

#include "os/TimedLock.h"

#include <algorithm>

#include <windows.h>

namespace orvo::os {

namespace {

static_assert(sizeof(SRWLOCK) == sizeof(void*) && alignof(SRWLOCK) == alignof(void*));
static_assert(sizeof(CONDITION_VARIABLE) == sizeof(void*) && alignof(CONDITION_VARIABLE) == alignof(void*));
// Null is what their initialisers stand for.

PSRWLOCK slimLock(void** lock)
{
    return reinterpret_cast<PSRWLOCK>(lock);
}

PCONDITION_VARIABLE variable(void** condition)
{
    return reinterpret_cast<PCONDITION_VARIABLE>(condition);
}

}   // namespace

void WindowsPrimitives::Mutex::lock()
{
    AcquireSRWLockExclusive(slimLock(&m_slimLock));
}

void WindowsPrimitives::Mutex::unlock()
{
    ReleaseSRWLockExclusive(slimLock(&m_slimLock));
}

void WindowsPrimitives::Condition::wait(Holder& holder)
{
    SleepConditionVariableSRW(variable(&m_variable), slimLock(holder.native()), INFINITE, 0);
}

void WindowsPrimitives::Condition::waitUntil(Holder& holder, Deadline deadline)
{
    using std::chrono::milliseconds;
    constexpr milliseconds kLongest{INFINITE - 1};
    const auto rest = std::chrono::ceil<milliseconds>(deadline - std::chrono::steady_clock::now());
    const auto limit = std::clamp(rest, milliseconds(0), kLongest);
    SleepConditionVariableSRW(variable(&m_variable), slimLock(holder.native()),
                              static_cast<DWORD>(limit.count()), 0);
}

void WindowsPrimitives::Condition::wakeOne()
{
    WakeConditionVariable(variable(&m_variable));
}

}   // namespace orvo::os

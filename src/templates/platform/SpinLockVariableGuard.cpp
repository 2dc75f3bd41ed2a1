#include "templates/platform/SpinLockVariableGuard.h"

#include "os/Os.h"

namespace orvo::templates::platform {

SpinLockVariableGuard::SpinLockVariableGuard(SpinLockVariable& lock, SpinLockVariable* owner)
    : m_lock(&lock), m_owner(owner)
{
    // Only this thread can have stored its own id, so the order of the read doesn't matter.
    if (m_owner && m_owner->load(std::memory_order_relaxed) == os::currentThreadId())
        return;
    uint32_t expected = 0;
    while (!m_lock->compare_exchange_weak(expected, 1, std::memory_order_acquire, std::memory_order_relaxed))
        expected = 0;
    if (m_owner)
        m_owner->store(os::currentThreadId(), std::memory_order_relaxed);
    m_holdsLock = true;
}

SpinLockVariableGuard::~SpinLockVariableGuard()
{
    if (!m_holdsLock)
        return;
    if (m_owner)
        m_owner->store(0, std::memory_order_relaxed);
    m_lock->store(0, std::memory_order_release);
}

}   // namespace orvo::templates::platform

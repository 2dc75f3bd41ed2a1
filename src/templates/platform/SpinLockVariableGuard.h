#pragma once

#include <atomic>
#include <cstdint>

namespace orvo::templates::platform {

/// A lock that is a plain process-wide variable: usable before any constructor ran and after any destructor.
using SpinLockVariable = std::atomic<uint32_t>;

/// Holds a spin lock for a scope. With an owner variable the lock is recursive by thread: an inner guard
/// takes nothing and gives nothing back. Without one it isn't.
struct SpinLockVariableGuard {
    explicit SpinLockVariableGuard(SpinLockVariable& lock, SpinLockVariable* owner = nullptr);
    SpinLockVariableGuard(const SpinLockVariableGuard&) = delete;
    SpinLockVariableGuard& operator=(const SpinLockVariableGuard&) = delete;
    virtual ~SpinLockVariableGuard();

    bool holdsLock() const { return m_holdsLock; }

private:
    SpinLockVariable* m_lock;
    SpinLockVariable* m_owner;
    bool m_holdsLock = false;
};

}   // namespace orvo::templates::platform

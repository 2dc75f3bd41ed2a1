#include "templates/platform/ReadWriteLockGuard.h"

namespace orvo::templates::platform {

ReadWriteLockGuard::ReadWriteLockGuard(ReadWriteLock& lock, LockMode mode) : Guard(&lock)
{
    if (mode == LockMode::Read)
        m_lock->lockRead();
    else if (mode == LockMode::Write)
        m_lock->lockWrite();
}

ReadWriteLockGuard::~ReadWriteLockGuard()
{
    if (m_holdsLock)
        m_lock->unlock();
}

}   // namespace orvo::templates::platform

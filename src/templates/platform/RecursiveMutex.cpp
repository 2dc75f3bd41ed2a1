#include "templates/platform/RecursiveMutex.h"

namespace orvo::templates::platform {

void RecursiveMutex::lock()
{
    m_mutex.lock();
    ++m_lockCount;
}

void RecursiveMutex::unlock()
{
    --m_lockCount;
    m_mutex.unlock();
}

RecursiveMutexGuard::RecursiveMutexGuard(RecursiveMutex& mutex) : Guard(&mutex)
{
    m_lock->lock();
}

RecursiveMutexGuard::~RecursiveMutexGuard()
{
    if (m_holdsLock)
        m_lock->unlock();
}

}   // namespace orvo::templates::platform

#include "templates/platform/Locks.h"

#include "os/Os.h"

namespace orvo::templates::platform {

void Event::set()
{
    const os::MutexLock lock(m_mutex);
    m_signalled = true;
    m_changed.notify_all();
}

void Event::reset()
{
    const os::MutexLock lock(m_mutex);
    m_signalled = false;
}

void Event::wait()
{
    os::MutexLock lock(m_mutex);
    while (!m_signalled)
        m_changed.wait(lock.native());
}

void ReadWriteLock::lockRead()
{
    // The event stays signalled while a writer merely waits, so a reader polls until that writer is in.
    do
        m_noWriter.wait();
    while (!tryRead());
}

void ReadWriteLock::lockWrite()
{
    {
        const os::MutexLock lock(m_state);
        ++m_waitingWriters;
    }
    do {
        m_noReaders.wait();
        m_noWriter.wait();
    } while (!tryWrite());
}

void ReadWriteLock::unlock()
{
    const os::MutexLock lock(m_state);
    if (m_writerInside) {
        m_writerInside = false;
        m_noWriter.set();
    } else if (--m_readers == 0) {
        m_noReaders.set();
    }
}

bool ReadWriteLock::tryRead()
{
    const os::MutexLock lock(m_state);
    if (m_writerInside || m_waitingWriters > 0)
        return false;
    ++m_readers;
    m_noReaders.reset();
    return true;
}

bool ReadWriteLock::tryWrite()
{
    const os::MutexLock lock(m_state);
    if (m_readers > 0 || m_writerInside)
        return false;
    --m_waitingWriters;
    m_writerInside = true;
    m_noWriter.reset();
    return true;
}

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

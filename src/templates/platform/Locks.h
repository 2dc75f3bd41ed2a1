#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>

#include "os/ThreadSafety.h"

namespace orvo::templates::patterns {

/// Base of the guards: the lock, and whether this guard holds it.
template <typename LockPointer>
class Guard {
public:
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    virtual ~Guard() = default;

    bool holdsLock() const { return m_holdsLock; }

protected:
    explicit Guard(LockPointer lock) : m_lock(lock) {}

    LockPointer m_lock;
    bool m_holdsLock = true;
};

}   // namespace orvo::templates::patterns

namespace orvo::templates::platform {

/// A flag that threads wait for. It stays signalled until it is reset, and wakes all who wait.
class Event {
public:
    explicit Event(bool signalled) : m_signalled(signalled) {}

    void set();
    void reset();
    void wait();

private:
    os::Mutex m_mutex;
    std::condition_variable m_changed;
    bool m_signalled ORVO_GUARDED_BY(m_mutex);
};

/// Many readers or one writer. A waiting writer goes before new readers. Not reentrant: a holder that asks
/// again waits for itself.
class ORVO_CAPABILITY("lock") ReadWriteLock {
public:
    virtual ~ReadWriteLock() = default;

    void lockRead() ORVO_ACQUIRE_SHARED();
    void lockWrite() ORVO_ACQUIRE();
    /// Ends the caller's hold, of either kind.
    void unlock() ORVO_RELEASE_GENERIC();

private:
    bool tryRead();
    bool tryWrite();

    os::Mutex m_state;
    uint32_t m_readers ORVO_GUARDED_BY(m_state) = 0;
    uint32_t m_waitingWriters ORVO_GUARDED_BY(m_state) = 0;
    bool m_writerInside ORVO_GUARDED_BY(m_state) = false;
    Event m_noReaders{true};
    Event m_noWriter{true};
};

enum class LockMode : int32_t { Read = 1, Write = 2 };

/// Holds a ReadWriteLock for a scope. Clang's analysis can't follow a mode that is chosen at run time: where it
/// is known, take ReadGuard or WriteGuard.
class ReadWriteLockGuard : public patterns::Guard<ReadWriteLock*> {
public:
    ReadWriteLockGuard(ReadWriteLock& lock, LockMode mode);
    ~ReadWriteLockGuard() override;
};

class ORVO_SCOPED_CAPABILITY ReadGuard : public ReadWriteLockGuard {
public:
    explicit ReadGuard(ReadWriteLock& lock) ORVO_ACQUIRE_SHARED(lock)
        : ReadWriteLockGuard(lock, LockMode::Read)
    {}
    ~ReadGuard() ORVO_RELEASE_GENERIC() override = default;
};

class ORVO_SCOPED_CAPABILITY WriteGuard : public ReadWriteLockGuard {
public:
    explicit WriteGuard(ReadWriteLock& lock) ORVO_ACQUIRE(lock) : ReadWriteLockGuard(lock, LockMode::Write) {}
    ~WriteGuard() ORVO_RELEASE_GENERIC() override = default;
};

/// A mutex that its owner thread may take again. Clang's analysis takes it for one that the owner may not: it
/// refuses two guards in one function.
class ORVO_CAPABILITY("mutex") RecursiveMutex {
public:
    virtual ~RecursiveMutex() = default;

    void lock() ORVO_ACQUIRE();
    void unlock() ORVO_RELEASE();
    /// How often the owner holds it now. Only the owner may ask; for other threads that is a race.
    int32_t lockCount() const { return m_lockCount; }

private:
    std::recursive_mutex m_mutex;
    int32_t m_lockCount = 0;
};

/// Holds a RecursiveMutex for a scope.
class ORVO_SCOPED_CAPABILITY RecursiveMutexGuard : public patterns::Guard<RecursiveMutex*> {
public:
    explicit RecursiveMutexGuard(RecursiveMutex& mutex) ORVO_ACQUIRE(mutex);
    ~RecursiveMutexGuard() ORVO_RELEASE() override;
};

/// A lock that is a plain process-wide variable: usable before any constructor ran and after any destructor.
struct ORVO_CAPABILITY("spin lock") SpinLockVariable : std::atomic<uint32_t> {
    using std::atomic<uint32_t>::atomic;
};

/// Holds a spin lock for a scope. With an owner variable the lock is recursive by thread: an inner guard
/// takes nothing and gives nothing back. Without one it isn't. To clang's analysis every guard takes the lock,
/// so it refuses two in one function.
struct ORVO_SCOPED_CAPABILITY SpinLockVariableGuard {
    explicit SpinLockVariableGuard(SpinLockVariable& lock, SpinLockVariable* owner = nullptr)
        ORVO_ACQUIRE(lock);
    SpinLockVariableGuard(const SpinLockVariableGuard&) = delete;
    SpinLockVariableGuard& operator=(const SpinLockVariableGuard&) = delete;
    virtual ~SpinLockVariableGuard() ORVO_RELEASE();

    bool holdsLock() const { return m_holdsLock; }

private:
    SpinLockVariable* m_lock;
    SpinLockVariable* m_owner;
    bool m_holdsLock = false;
};

}   // namespace orvo::templates::platform

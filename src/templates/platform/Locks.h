#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <mutex>

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
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_signalled;
};

/// Many readers or one writer. A waiting writer goes before new readers. Not reentrant: a holder that asks
/// again waits for itself.
class ReadWriteLock {
public:
    virtual ~ReadWriteLock() = default;

    void lockRead();
    void lockWrite();
    /// Ends the caller's hold, of either kind.
    void unlock();

private:
    bool tryRead();
    bool tryWrite();

    uint32_t m_readers = 0;
    uint32_t m_waitingWriters = 0;
    bool m_writerInside = false;
    Event m_noReaders{true};
    Event m_noWriter{true};
    std::mutex m_state;
};

enum class LockMode : int32_t { Read = 1, Write = 2 };

/// Holds a ReadWriteLock for a scope.
class ReadWriteLockGuard : public patterns::Guard<ReadWriteLock*> {
public:
    ReadWriteLockGuard(ReadWriteLock& lock, LockMode mode);
    ~ReadWriteLockGuard() override;
};

/// A mutex that its owner thread may take again.
class RecursiveMutex {
public:
    virtual ~RecursiveMutex() = default;

    void lock();
    void unlock();
    /// How often the owner holds it now. For the owner to ask; other threads would race.
    int32_t lockCount() const { return m_lockCount; }

private:
    std::recursive_mutex m_mutex;
    int32_t m_lockCount = 0;
};

/// Holds a RecursiveMutex for a scope.
class RecursiveMutexGuard : public patterns::Guard<RecursiveMutex*> {
public:
    explicit RecursiveMutexGuard(RecursiveMutex& mutex);
    ~RecursiveMutexGuard() override;
};

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

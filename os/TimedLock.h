#pragma once

#include <chrono>
#include <condition_variable>

#include "os/ThreadSafety.h"

namespace orvo::os {

/// A point in time of a clock that nobody can set back.
using Deadline = std::chrono::steady_clock::time_point;

/// A lock that can be asked for until a deadline, and the one condition that its holders wait for. Not
/// reentrant. It must outlive every call. Any thread.
///
/// `Primitives` are a mutex, its scoped holder and a condition. The mutex guards this object alone and is held
/// for a few instructions at a time, so a lock with a deadline needs no more of a system than a wait with one.
template <typename Primitives>
class ORVO_CAPABILITY("mutex") BasicTimedLock {
public:
    void lock() ORVO_ACQUIRE()
    {
        Holder holder(m_mutex);
        acquire(holder);
    }

    /// Waits until `deadline`, if need be. Whether the caller has the lock now.
    bool tryLockUntil(Deadline deadline) ORVO_TRY_ACQUIRE(true)
    {
        Holder holder(m_mutex);
        while (m_isHeld) {
            if (std::chrono::steady_clock::now() >= deadline)
                return false;
            ++m_waitingForLock;
            m_released.waitUntil(holder, deadline);
            --m_waitingForLock;
        }
        m_isHeld = true;
        return true;
    }

    void unlock() ORVO_RELEASE() { release(false); }

    /// Gives the lock back and then wakes one of those in waitUntil(), if any: it finds the lock free.
    void unlockAndWakeOne() ORVO_RELEASE() { release(true); }

    /// Gives the lock up until somebody wakes this thread, `deadline` has come or the wait ends for no reason,
    /// then takes the lock again, without limit. Keeps it and returns at once if the deadline has passed.
    void waitUntil(Deadline deadline) ORVO_REQUIRES(this)
    {
        if (std::chrono::steady_clock::now() >= deadline)
            return;
        // Nobody can lock, and then wake, before this thread sleeps: the mutex is given up by the sleep itself.
        Holder holder(m_mutex);
        m_isHeld = false;
        if (m_waitingForLock > 0)
            m_released.wakeOne();
        ++m_waitingForWake;
        m_woken.waitUntil(holder, deadline);
        --m_waitingForWake;
        acquire(holder);
    }

private:
    using Holder = typename Primitives::Holder;

    void acquire(Holder& holder) ORVO_REQUIRES(m_mutex)
    {
        while (m_isHeld) {
            ++m_waitingForLock;
            m_released.wait(holder);
            --m_waitingForLock;
        }
        m_isHeld = true;
    }

    void release(bool wake) ORVO_EXCLUDES(m_mutex)
    {
        bool wakeLocker = false;
        bool wakeWaiter = false;
        {
            const Holder holder(m_mutex);
            m_isHeld = false;
            wakeLocker = m_waitingForLock > 0;
            wakeWaiter = wake && m_waitingForWake > 0;
        }
        // Only now, or a thread would wake into the mutex and sleep again.
        if (wakeWaiter)
            m_woken.wakeOne();
        if (wakeLocker)
            m_released.wakeOne();
    }

    typename Primitives::Mutex m_mutex;
    typename Primitives::Condition m_released;
    typename Primitives::Condition m_woken;
    bool m_isHeld ORVO_GUARDED_BY(m_mutex) = false;
    // They save the call that wakes nobody.
    int m_waitingForLock ORVO_GUARDED_BY(m_mutex) = 0;
    int m_waitingForWake ORVO_GUARDED_BY(m_mutex) = 0;
};

/// The primitives of the standard library.
struct StandardPrimitives {
    using Mutex = os::Mutex;
    using Holder = MutexLock;

    class Condition {
    public:
        void wait(Holder& holder) { m_condition.wait(holder.native()); }
        void waitUntil(Holder& holder, Deadline deadline)
        {
            m_condition.wait_until(holder.native(), deadline);
        }
        void wakeOne() { m_condition.notify_one(); }

    private:
        std::condition_variable m_condition;
    };
};

#if defined(_WIN32)

/// The slim lock and the condition variable of Windows. The standard library's there are kernel objects, and a
/// hand-over between threads takes several times as long.
struct WindowsPrimitives {
    class ORVO_CAPABILITY("mutex") Mutex {
    public:
        void lock() ORVO_ACQUIRE();
        void unlock() ORVO_RELEASE();
        void** native() { return &m_slimLock; }

    private:
        void* m_slimLock = nullptr;
    };

    class ORVO_SCOPED_CAPABILITY Holder {
    public:
        explicit Holder(Mutex& mutex) ORVO_ACQUIRE(mutex) : m_mutex(mutex) { m_mutex.lock(); }
        Holder(const Holder&) = delete;
        Holder& operator=(const Holder&) = delete;
        ~Holder() ORVO_RELEASE() { m_mutex.unlock(); }

        void** native() { return m_mutex.native(); }

    private:
        Mutex& m_mutex;
    };

    class Condition {
    public:
        void wait(Holder& holder);
        /// To the next whole millisecond.
        void waitUntil(Holder& holder, Deadline deadline);
        void wakeOne();

    private:
        void* m_variable = nullptr;
    };
};

using TimedLock = BasicTimedLock<WindowsPrimitives>;

#else

using TimedLock = BasicTimedLock<StandardPrimitives>;

#endif

}   // namespace orvo::os

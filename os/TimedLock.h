#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>

#include "os/ThreadSafety.h"

namespace orvo::os {

/// A point in time of a clock that nobody can set back.
using Deadline = std::chrono::steady_clock::time_point;

/// A lock that can be asked for until a deadline, and the one condition that its holders wait for. Not
/// reentrant. It must outlive every call. Any thread.
///
/// Who finds it free takes it by one atomic step, and gives it back by another. The mutex of `Primitives`, which
/// are a mutex, its scoped holder and a condition, is for those who have to sleep, or wake a sleeper.
template <typename Primitives>
class ORVO_CAPABILITY("mutex") BasicTimedLock {
public:
    void lock() ORVO_ACQUIRE()
    {
        if (tryLock())
            return;
        Holder holder(m_mutex);
        acquire(holder);
    }

    /// Whether the caller has the lock now. Does not wait.
    bool tryLock() ORVO_TRY_ACQUIRE(true) { return takeIfFree(); }

    /// Waits until `deadline`, if need be. Whether the caller has the lock now.
    bool tryLockUntil(Deadline deadline) ORVO_TRY_ACQUIRE(true)
    {
        if (tryLock())
            return true;
        Holder holder(m_mutex);
        while (!takeOrBeWoken()) {
            if (std::chrono::steady_clock::now() >= deadline)
                return false;
            m_released.waitUntil(holder, deadline);
        }
        return true;
    }

    void unlock() ORVO_RELEASE() { release(false); }

    /// Gives the lock back and then wakes one of those in waitUntil(), if any: it finds the lock free.
    void unlockAndWakeOne() ORVO_RELEASE() { release(m_waiting > 0); }

    /// Gives the lock up until somebody wakes this thread, `deadline` has come or the wait ends for no reason,
    /// then takes the lock again, without limit. Keeps it and returns at once if the deadline has passed.
    void waitUntil(Deadline deadline) ORVO_REQUIRES(this)
    {
        if (std::chrono::steady_clock::now() >= deadline)
            return;
        Holder holder(m_mutex);
        ++m_waiting;
        if (m_state.exchange(State::Free, std::memory_order_release) == State::HeldAndWanted)
            m_released.wakeOne();
        m_woken.waitUntil(holder, deadline);
        acquire(holder);
        --m_waiting;
    }

private:
    using Holder = typename Primitives::Holder;

    enum class State { Free, Held, HeldAndWanted };

    bool takeIfFree()
    {
        State found = State::Free;
        return m_state.compare_exchange_strong(found, State::Held, std::memory_order_acquire,
                                               std::memory_order_relaxed);
    }

    /// If the lock is not free, its holder will wake one who sleeps. So will the caller who gets it, because
    /// others may be asleep.
    bool takeOrBeWoken() ORVO_REQUIRES(m_mutex)
    {
        return m_state.exchange(State::HeldAndWanted, std::memory_order_acquire) == State::Free;
    }

    void acquire(Holder& holder) ORVO_REQUIRES(m_mutex)
    {
        if (takeIfFree())
            return;
        while (!takeOrBeWoken())
            m_released.wait(holder);
    }

    void release(bool wakeWaiter) ORVO_EXCLUDES(m_mutex)
    {
        const bool wakeLocker =
            m_state.exchange(State::Free, std::memory_order_release) == State::HeldAndWanted;
        if (!wakeWaiter && !wakeLocker)
            return;
        {
            // Those who are to wake hold it from before the lock was free until they sleep.
            const Holder holder(m_mutex);
        }
        // Only now, or a thread would wake into the mutex and sleep again.
        if (wakeWaiter)
            m_woken.wakeOne();
        if (wakeLocker)
            m_released.wakeOne();
    }

    std::atomic<State> m_state{State::Free};
    // In waitUntil(). It saves the call that wakes nobody.
    int m_waiting ORVO_GUARDED_BY(this) = 0;
    typename Primitives::Mutex m_mutex;
    typename Primitives::Condition m_released;
    typename Primitives::Condition m_woken;
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

#pragma once

#include <memory>

#include <boost/thread/lock_types.hpp>
#include <boost/thread/mutex.hpp>

#include "acquisition/buffers/BufferCoordinator.h"

namespace orvo::cognex {

/// The lock of a BufferCoordinator and the only door to its queues. Its end wakes a waiter, if an image was
/// published, and gives the lock back. A move that meets an entry whose buffer has gone drops it: nothing is
/// unblocked, nothing queued, and it goes on with the next.
/// Threads: one, for one scope. The coordinator outlives it.
class BufferAccess {
public:
    explicit BufferAccess(BufferCoordinator& coordinator);
    BufferAccess(BufferCoordinator& coordinator, Ticks deadline);
    BufferAccess(const BufferAccess&) = delete;
    BufferAccess& operator=(const BufferAccess&) = delete;
    ~BufferAccess();

    /// Without the lock nothing here may be touched.
    bool holdsLock() const { return m_lock.owns_lock(); }

    std::shared_ptr<BufferQueue> freeQueue() const { return m_coordinator.m_freeQueue; }
    std::shared_ptr<BufferQueue> readyQueue() const { return m_coordinator.m_readyQueue; }
    std::weak_ptr<Buffer> currentBuffer() const { return m_coordinator.m_currentBuffer; }

    /// Free to Ready. A buffer that is not free is made ready all the same.
    void publish(const std::weak_ptr<Buffer>& buffer);
    /// Ready to Current. Nothing becomes current if only gone entries were ready.
    void takeOldestReady();
    /// Current to Free, then the board is told.
    void releaseCurrent();
    /// Ready to Free, after the board was told: the oldest one, or all of them, oldest first.
    void recycleOldestReady();
    void recycleAllReady();

    /// Gives up the lock until an image was published, `deadline` has come or the wait ends for no reason,
    /// and takes it again. Keeps it and returns at once if the deadline has passed.
    void waitUntil(Ticks deadline);

private:
    std::shared_ptr<Buffer> popOldestReady();

    BufferCoordinator& m_coordinator;
    boost::unique_lock<boost::timed_mutex> m_lock;
    bool m_notifyOnRelease = false;
};

}   // namespace orvo::cognex

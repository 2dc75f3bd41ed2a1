#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/lock_types.hpp>
#include <boost/thread/mutex.hpp>

#include "acquisition/buffers/Ticks.h"

namespace orvo::cognex {

class Buffer;
class BufferAccess;

/// Buffers in order of arrival, oldest first. Owns none of them. Guarded by the lock of its BufferCoordinator.
class BufferQueue {
public:
    void push(std::weak_ptr<Buffer> buffer) { m_buffers.push_back(std::move(buffer)); }
    /// Removes the oldest entry, gone or not. The queue must not be empty.
    std::weak_ptr<Buffer> popFront();
    /// Takes out the first entry of the same buffer; empty if there is none.
    std::weak_ptr<Buffer> remove(const std::weak_ptr<Buffer>& buffer);
    void clear() { m_buffers.clear(); }
    bool isEmpty() const { return m_buffers.empty(); }
    /// Makes room for so many entries, so that push() allocates nothing on the callback thread.
    void reserve(size_t count) { m_buffers.reserve(count); }

private:
    std::vector<std::weak_ptr<Buffer>> m_buffers;
};

/// Where each buffer of one DMA channel is: free for the board, ready for the host, or current, which is the
/// one that the host reads. Holds the one lock of the channel; the queues are reached through a BufferAccess
/// alone.
/// Threads: any.
class BufferCoordinator {
public:
    /// Waits for the lock without limit.
    BufferAccess lock();
    /// Waits until `deadline`. The access may come without the lock: ask it.
    BufferAccess tryLockUntil(Ticks deadline);

private:
    friend class BufferAccess;

    boost::timed_mutex m_mutex;
    boost::condition_variable_any m_imageArrived;
    BufferQueue m_freeQueue;
    BufferQueue m_readyQueue;
    std::weak_ptr<Buffer> m_currentBuffer;
};

/// The lock of a BufferCoordinator and the only door to its queues: a value on the stack. Its end wakes a
/// waiter, if an image was published, and gives the lock back. A move that meets an entry whose buffer has
/// gone drops it, unblocks and queues nothing, and goes on with the next entry.
/// Threads: one, for one scope. The coordinator outlives it.
/// Throws:  boost::lock_error from the constructors, if the system refuses the lock.
class BufferAccess {
public:
    explicit BufferAccess(BufferCoordinator& coordinator);
    BufferAccess(BufferCoordinator& coordinator, Ticks deadline);
    BufferAccess(const BufferAccess&) = delete;
    BufferAccess& operator=(const BufferAccess&) = delete;
    ~BufferAccess();

    /// Without the lock nothing below may be touched.
    bool holdsLock() const { return m_lock.owns_lock(); }

    BufferQueue& freeQueue() { return m_coordinator.m_freeQueue; }
    BufferQueue& readyQueue() { return m_coordinator.m_readyQueue; }
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
    /// Current to nowhere: the ring of the buffer has gone, and the board is not told.
    void forgetCurrent();
    /// Forgets all buffers, also the current one, before those of a new ring come.
    void forgetAll();

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

#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "acquisition/buffers/Ticks.h"
#include "os/TimedLock.h"

namespace orvo::cognex {

class Buffer;
class BufferAccess;

/// Buffers in order of arrival, oldest first. Owns none of them. Guarded by the lock of its BufferCoordinator.
class BufferQueue {
public:
    void push(std::weak_ptr<Buffer> buffer);
    /// Removes the oldest entry, gone or not. The queue must not be empty.
    std::weak_ptr<Buffer> popFront();
    /// Takes out the first entry of the same buffer; empty if there is none.
    std::weak_ptr<Buffer> remove(const std::weak_ptr<Buffer>& buffer);
    void clear();
    bool isEmpty() const { return m_oldest == m_buffers.size(); }
    /// Makes room for so many entries, so that push() allocates nothing on the callback thread.
    void reserve(size_t count) { m_buffers.reserve(2 * count); }

private:
    std::vector<std::weak_ptr<Buffer>>::iterator oldest()
    {
        return m_buffers.begin() + static_cast<std::ptrdiff_t>(m_oldest);
    }

    // The places before the oldest are used up. They are cut off when the room ends: with twice the room that is
    // needed, so seldom that the entries hardly ever move.
    std::vector<std::weak_ptr<Buffer>> m_buffers;
    size_t m_oldest = 0;
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
    BufferAccess tryLockUntil(LateDeadline& deadline);

private:
    friend class BufferAccess;

    os::TimedLock m_lock;   // its condition: an image has arrived
    BufferQueue m_freeQueue;
    BufferQueue m_readyQueue;
    std::weak_ptr<Buffer> m_currentBuffer;
};

/// The lock of a BufferCoordinator and the only door to its queues: a value on the stack. Its end gives the
/// lock back and wakes a waiter, if an image was published. A move that meets an entry whose buffer has
/// gone drops it, unblocks and queues nothing, and goes on with the next entry.
/// Threads: one, for one scope. The coordinator outlives it.
/// Throws:  std::system_error from the constructors, if the system refuses the lock.
class BufferAccess {
public:
    // Clang's analysis can't follow a lock that lives as long as a member says.
    explicit BufferAccess(BufferCoordinator& coordinator) ORVO_NO_THREAD_SAFETY_ANALYSIS;
    BufferAccess(BufferCoordinator& coordinator, LateDeadline& deadline) ORVO_NO_THREAD_SAFETY_ANALYSIS;
    BufferAccess(const BufferAccess&) = delete;
    BufferAccess& operator=(const BufferAccess&) = delete;
    ~BufferAccess() ORVO_NO_THREAD_SAFETY_ANALYSIS;

    /// Without the lock nothing below may be touched.
    bool holdsLock() const { return m_holdsLock; }

    BufferQueue& freeQueue() { return m_coordinator.m_freeQueue; }
    BufferQueue& readyQueue() { return m_coordinator.m_readyQueue; }
    const std::weak_ptr<Buffer>& currentBuffer() const { return m_coordinator.m_currentBuffer; }

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
    void waitUntil(Ticks deadline) ORVO_NO_THREAD_SAFETY_ANALYSIS;

private:
    std::shared_ptr<Buffer> popOldestReady();

    BufferCoordinator& m_coordinator;
    bool m_holdsLock;
    bool m_notifyOnRelease = false;
};

}   // namespace orvo::cognex

#pragma once

#include <memory>

#include <boost/thread/condition_variable.hpp>
#include <boost/thread/mutex.hpp>

#include "acquisition/buffers/BufferQueue.h"
#include "acquisition/buffers/Ticks.h"

namespace orvo::cognex {

class Buffer;
class BufferAccess;

/// Where each buffer of one DMA channel is: free for the board, ready for the host, or current, which is the
/// one that the host reads. Holds the one lock of the channel; all comes to the queues through a BufferAccess.
/// Threads: any.
class BufferCoordinator {
public:
    BufferCoordinator();

    /// Waits for the lock without limit. Null only if there is no memory for the access.
    std::shared_ptr<BufferAccess> lock();
    /// Waits until `deadline`. The access may come without the lock: ask it. Null as for lock().
    std::shared_ptr<BufferAccess> tryLockUntil(Ticks deadline);

private:
    friend class BufferAccess;

    boost::timed_mutex m_mutex;
    boost::condition_variable_any m_imageArrived;
    std::shared_ptr<BufferQueue> m_freeQueue;
    std::shared_ptr<BufferQueue> m_readyQueue;
    std::weak_ptr<Buffer> m_currentBuffer;
};

}   // namespace orvo::cognex

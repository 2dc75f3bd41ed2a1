#pragma once

#include <cstdint>
#include <memory>

#include "acquisition/buffers/BufferAccess.h"
#include "acquisition/buffers/Ticks.h"

namespace orvo::cognex {

class Buffer;

/// What becomes of a new image when the host is slower than the camera, and the host's way to an image.
/// Threads: newBuffer() on the callback thread, the rest on host threads. Replaced only while the port stands.
/// Throws:  Pending while there is no image; std::bad_alloc where there is no memory for the lock's holder.
class AcquisitionStrategy {
public:
    AcquisitionStrategy() = default;
    AcquisitionStrategy(const AcquisitionStrategy&) = delete;
    AcquisitionStrategy& operator=(const AcquisitionStrategy&) = delete;
    virtual ~AcquisitionStrategy() = default;

    /// Must come before anything below. Keeps the coordinator alive.
    void setCoordinator(const std::weak_ptr<BufferCoordinator>& coordinator);

    virtual void newBuffer(const std::weak_ptr<Buffer>& buffer) = 0;
    /// From now on wait() throws AIKException "brd error code: N"; 0 for none. Nothing calls this yet.
    virtual void setErrorCode(int64_t code) { m_errorCode = code; }
    /// wait(), then the current buffer.
    virtual std::weak_ptr<Buffer> getImage(Ticks timeout);

    /// Makes sure that there is a current buffer: the one that the host holds, else the oldest ready one.
    void wait(Ticks timeout);
    /// Gives the current buffer back to the board.
    void release();

protected:
    /// The lock, without limit.
    std::shared_ptr<BufferAccess> access();

private:
    int64_t m_errorCode = 0;
    std::shared_ptr<BufferCoordinator> m_coordinator;
};

}   // namespace orvo::cognex

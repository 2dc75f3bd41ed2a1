#pragma once

#include <cstdint>
#include <memory>
#include <span>

#include "acquisition/buffers/BufferCoordinator.h"
#include "acquisition/buffers/Ticks.h"
#include "tools/logging/Logging.h"

namespace orvo::cognex {

class Buffer;
class DmaPort;

/// What becomes of a new image when the host is slower than the camera, and the host's way to an image.
/// Threads: newBuffer() on the callback thread, the rest on host threads. Replaced only while the port is
///          stopped.
/// Throws:  Pending while there is no image.
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
    BufferAccess access() { return m_coordinator->lock(); }

private:
    /// As tryLockUntil(). Throws Pending if the system refuses the lock.
    BufferAccess accessUntil(LateDeadline& deadline);

    int64_t m_errorCode = 0;
    std::shared_ptr<BufferCoordinator> m_coordinator;
};

/// The host sees the latest image only. A new one sends those back to the board that were not fetched.
class NewestOnlyStrategy : public AcquisitionStrategy {
public:
    void newBuffer(const std::weak_ptr<Buffer>& buffer) override;
};

/// The host sees images oldest first. When no buffer is left for the board, the oldest image goes back to it.
class OldestFirstOverwriteStrategy : public AcquisitionStrategy {
public:
    void newBuffer(const std::weak_ptr<Buffer>& buffer) override;

    virtual tools::logging::Logger* getLogger() { return m_logger.get(); }

private:
    tools::logging::CachedLogger m_logger{"orvo.Cognex.AcquisitionEngine"};
};

/// The host sees every image, oldest first, and hears of those that the board had no buffer for: getImage()
/// then throws AIKException "N images lost due buffer overflow", until the board counts anew.
class OldestFirstStrategy : public AcquisitionStrategy {
public:
    /// Comes right after construction.
    void setDmaPort(std::weak_ptr<DmaPort> dmaPort) { m_dmaPort = std::move(dmaPort); }

    void newBuffer(const std::weak_ptr<Buffer>& buffer) override;
    std::weak_ptr<Buffer> getImage(Ticks timeout) override;

private:
    int32_t lostImages() const;

    std::weak_ptr<DmaPort> m_dmaPort;
};

/// A strategy that the host can choose: its entry in "AcquisitionStrategy", and how it is made.
struct StrategyRow {
    const char* name;
    int32_t value;
    std::shared_ptr<AcquisitionStrategy> (*make)(const std::weak_ptr<DmaPort>& dmaPort);
};

/// In the order of the feature's entries; the first one is the default.
std::span<const StrategyRow> strategies();

}   // namespace orvo::cognex

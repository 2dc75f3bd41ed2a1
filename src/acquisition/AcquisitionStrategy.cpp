#include "acquisition/AcquisitionStrategy.h"

#include <exception>
#include <string>

#include "AIKException.h"
#include "brdlib/DmaPort.h"
#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

namespace {

constexpr int32_t kStatusLostPictures = 30;

template <typename Strategy>
std::shared_ptr<AcquisitionStrategy> make(const std::weak_ptr<DmaPort>& /*dmaPort*/)
{
    return std::make_shared<Strategy>();
}

std::shared_ptr<AcquisitionStrategy> makeOldestFirst(const std::weak_ptr<DmaPort>& dmaPort)
{
    auto strategy = std::make_shared<OldestFirstStrategy>();
    strategy->setDmaPort(dmaPort);
    return strategy;
}

constexpr StrategyRow kStrategies[] = {
    {"OldestFirstOverwrite", 1, make<OldestFirstOverwriteStrategy>},
    {"NewestOnly", 0, make<NewestOnlyStrategy>},
    {"OldestFirst", 2, makeOldestFirst},
};

[[noreturn]] void throwNoImage()
{
    throw Pending("No image arrived within the given timeout.");
}

void requireLock(const BufferAccess& access)
{
    if (!access.holdsLock())
        throwNoImage();
}

}   // namespace

void AcquisitionStrategy::setCoordinator(const std::weak_ptr<BufferCoordinator>& coordinator)
{
    m_coordinator = coordinator.lock();
}

std::weak_ptr<Buffer> AcquisitionStrategy::getImage(Ticks timeout)
{
    wait(timeout);
    LateDeadline deadline(timeout, wrappingDeadlineAfter);
    const BufferAccess queues = accessUntil(deadline);
    requireLock(queues);
    return queues.currentBuffer();
}

void AcquisitionStrategy::wait(Ticks timeout)
{
    if (m_errorCode != 0)
        throwBrdError(m_errorCode);
    LateDeadline deadline(timeout);
    BufferAccess queues = accessUntil(deadline);
    requireLock(queues);
    if (!queues.currentBuffer().expired())
        return;
    if (queues.readyQueue().isEmpty())
        queues.waitUntil(deadline.get());
    if (queues.readyQueue().isEmpty())
        throwNoImage();
    // Another host thread may have taken an image during the wait; it must not be overwritten.
    if (queues.currentBuffer().expired())
        queues.takeOldestReady();
    if (queues.currentBuffer().expired())
        throwNoImage();
}

void AcquisitionStrategy::release()
{
    access().releaseCurrent();
}

BufferAccess AcquisitionStrategy::accessUntil(LateDeadline& deadline)
{
    try {
        return m_coordinator->tryLockUntil(deadline);
    } catch (const std::exception&) {   // the system refuses the lock
        throw Pending("Cannot lock BufferAccess.");
    }
}

void NewestOnlyStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    BufferAccess queues = access();
    queues.recycleAllReady();
    queues.publish(buffer);
}

void OldestFirstOverwriteStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    BufferAccess queues = access();
    queues.publish(buffer);
    if (queues.freeQueue().isEmpty())
        queues.recycleOldestReady();
}

void OldestFirstStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    BufferAccess queues = access();
    // Without a free buffer the image is left alone: the board counts what it loses, and getImage() tells.
    if (!queues.freeQueue().isEmpty())
        queues.publish(buffer);
}

std::weak_ptr<Buffer> OldestFirstStrategy::getImage(Ticks timeout)
{
    const int32_t lost = lostImages();
    if (lost >= 1)
        throw AIKException(std::to_string(lost) + " images lost due buffer overflow");
    return AcquisitionStrategy::getImage(timeout);
}

int32_t OldestFirstStrategy::lostImages() const
{
    const auto port = locked(m_dmaPort);
    const int64_t answer = Brd_getStatusEx(port->boardHandle(), kStatusLostPictures, 0,
                                           static_cast<uint32_t>(port->dmaIndex()), port->memoryHead());
    if (answer < 0)
        throwBrdError(answer);
    return static_cast<int32_t>(answer);
}

std::span<const StrategyRow> strategies()
{
    return kStrategies;
}

}   // namespace orvo::cognex

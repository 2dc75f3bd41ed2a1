#include "acquisition/AcquisitionStrategy.h"

#include <new>
#include <string>

#include "AIKException.h"
#include "brdlib/DmaPort.h"
#include "brdlib/binding/BrdFunctions.h"

namespace orvo::cognex {

namespace {

[[noreturn]] void throwNoImage()
{
    throw Pending("No image arrived within the given timeout.");
}

}   // namespace

void AcquisitionStrategy::setCoordinator(const std::weak_ptr<BufferCoordinator>& coordinator)
{
    m_coordinator = coordinator.lock();
}

std::weak_ptr<Buffer> AcquisitionStrategy::getImage(Ticks timeout)
{
    wait(timeout);
    const auto access = m_coordinator->tryLockUntil(wrappingSum(now(), timeout));
    if (!access || !access->holdsLock())
        throwNoImage();
    return access->currentBuffer();
}

void AcquisitionStrategy::wait(Ticks timeout)
{
    if (m_errorCode != 0)
        throwBrdError(m_errorCode);
    const Ticks deadline = deadlineAfter(timeout);
    const auto access = m_coordinator->tryLockUntil(deadline);
    if (!access)
        throw Pending("Cannot lock BufferAccess.");
    if (!access->holdsLock())
        throwNoImage();
    if (!access->currentBuffer().expired())
        return;
    if (access->readyQueue()->isEmpty())
        access->waitUntil(deadline);
    if (access->readyQueue()->isEmpty())
        throwNoImage();
    // Another host thread may have taken an image during the wait; it must not be overwritten.
    if (access->currentBuffer().expired())
        access->takeOldestReady();
    if (access->currentBuffer().expired())
        throwNoImage();
}

void AcquisitionStrategy::release()
{
    access()->releaseCurrent();
}

std::shared_ptr<BufferAccess> AcquisitionStrategy::access()
{
    auto access = m_coordinator->lock();
    if (!access)
        throw std::bad_alloc();
    return access;
}

void NewestOnlyStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    const auto queues = access();
    queues->recycleAllReady();
    queues->publish(buffer);
}

void OldestFirstOverwriteStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    const auto queues = access();
    queues->publish(buffer);
    if (queues->freeQueue()->isEmpty())
        queues->recycleOldestReady();
}

namespace {

constexpr int32_t kStatusLostPictures = 30;

}   // namespace

void OldestFirstStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    const auto queues = access();
    // Without a free buffer the image is left alone: the board counts what it loses, and getImage() tells.
    if (!queues->freeQueue()->isEmpty())
        queues->publish(buffer);
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

}   // namespace orvo::cognex

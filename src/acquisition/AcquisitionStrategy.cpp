#include "acquisition/AcquisitionStrategy.h"

#include <new>

#include "AIKException.h"
#include "brdlib/binding/checkBrd.h"

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

}   // namespace orvo::cognex

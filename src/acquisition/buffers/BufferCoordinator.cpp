#include "acquisition/buffers/BufferCoordinator.h"

#include <algorithm>

#include "acquisition/buffers/Buffer.h"

namespace orvo::cognex {

namespace {

// Far beyond any wait, and small enough for the clocks that Boost adds it to.
constexpr boost::chrono::milliseconds kLongestWait = boost::chrono::hours(24 * 365);

}   // namespace

std::weak_ptr<Buffer> BufferQueue::popFront()
{
    std::weak_ptr<Buffer> oldest = std::move(m_buffers.front());
    m_buffers.erase(m_buffers.begin());
    return oldest;
}

std::weak_ptr<Buffer> BufferQueue::remove(const std::weak_ptr<Buffer>& buffer)
{
    const auto wanted = buffer.lock();
    if (!wanted)
        return {};
    const auto entry =
        std::find_if(m_buffers.begin(), m_buffers.end(),
                     [&](const std::weak_ptr<Buffer>& other) { return other.lock() == wanted; });
    if (entry == m_buffers.end())
        return {};
    std::weak_ptr<Buffer> removed = std::move(*entry);
    m_buffers.erase(entry);
    return removed;
}

BufferAccess BufferCoordinator::lock()
{
    return BufferAccess(*this);
}

BufferAccess BufferCoordinator::tryLockUntil(Ticks deadline)
{
    return {*this, deadline};
}

BufferAccess::BufferAccess(BufferCoordinator& coordinator)
    : m_coordinator(coordinator), m_lock(coordinator.m_mutex)
{}

BufferAccess::BufferAccess(BufferCoordinator& coordinator, Ticks deadline)
    : m_coordinator(coordinator), m_lock(coordinator.m_mutex, timePoint(deadline))
{}

BufferAccess::~BufferAccess()
{
    // Before the lock goes, so that the waiter finds all moves of this event done.
    if (m_notifyOnRelease)
        m_coordinator.m_imageArrived.notify_one();
}

void BufferAccess::publish(const std::weak_ptr<Buffer>& buffer)
{
    freeQueue().remove(buffer);
    readyQueue().push(buffer);
    m_notifyOnRelease = true;
}

void BufferAccess::takeOldestReady()
{
    m_coordinator.m_currentBuffer = popOldestReady();
}

void BufferAccess::releaseCurrent()
{
    if (const auto buffer = m_coordinator.m_currentBuffer.lock()) {
        freeQueue().push(buffer);
        buffer->unblock();
    }
    m_coordinator.m_currentBuffer.reset();
}

void BufferAccess::recycleOldestReady()
{
    // The board first, the queue second; releaseCurrent() does it the other way round. Both are deliberate.
    if (const auto buffer = popOldestReady()) {
        buffer->unblock();
        freeQueue().push(buffer);
    }
}

void BufferAccess::recycleAllReady()
{
    while (!readyQueue().isEmpty())
        recycleOldestReady();
}

void BufferAccess::forgetCurrent()
{
    m_coordinator.m_currentBuffer.reset();
}

void BufferAccess::forgetAll()
{
    freeQueue().clear();
    readyQueue().clear();
    forgetCurrent();
}

void BufferAccess::waitUntil(Ticks deadline)
{
    const Ticks time = now();
    if (time >= deadline)
        return;
    const auto rest = boost::chrono::ceil<boost::chrono::milliseconds>(deadline - time);
    m_coordinator.m_imageArrived.wait_for(m_lock, std::min(rest, kLongestWait));
}

std::shared_ptr<Buffer> BufferAccess::popOldestReady()
{
    while (!readyQueue().isEmpty())
        if (auto buffer = readyQueue().popFront().lock())
            return buffer;
    return nullptr;
}

}   // namespace orvo::cognex

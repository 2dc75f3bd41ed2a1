#include "acquisition/buffers/BufferCoordinator.h"

#include <algorithm>

#include "acquisition/buffers/Buffer.h"

namespace orvo::cognex {

void BufferQueue::push(std::weak_ptr<Buffer> buffer)
{
    if (m_buffers.size() == m_buffers.capacity()) {
        m_buffers.erase(m_buffers.begin(), oldest());
        m_oldest = 0;
    }
    m_buffers.push_back(std::move(buffer));
}

std::weak_ptr<Buffer> BufferQueue::popFront()
{
    std::weak_ptr<Buffer> popped = std::move(m_buffers[m_oldest]);
    if (++m_oldest == m_buffers.size())
        clear();
    return popped;
}

std::weak_ptr<Buffer> BufferQueue::remove(const std::weak_ptr<Buffer>& buffer)
{
    if (buffer.expired())
        return {};
    // Compared by owner, which counts no references. The usual find is the oldest entry.
    const auto entry = std::find_if(oldest(), m_buffers.end(), [&](const std::weak_ptr<Buffer>& other) {
        return !other.owner_before(buffer) && !buffer.owner_before(other);
    });
    if (entry == m_buffers.end())
        return {};
    if (entry == oldest())
        return popFront();
    std::weak_ptr<Buffer> removed = std::move(*entry);
    m_buffers.erase(entry);
    return removed;
}

void BufferQueue::clear()
{
    m_buffers.clear();
    m_oldest = 0;
}

BufferAccess BufferCoordinator::lock()
{
    return BufferAccess(*this);
}

BufferAccess BufferCoordinator::tryLockUntil(LateDeadline& deadline)
{
    return {*this, deadline};
}

BufferAccess::BufferAccess(BufferCoordinator& coordinator) : m_coordinator(coordinator), m_holdsLock(true)
{
    coordinator.m_lock.lock();
}

BufferAccess::BufferAccess(BufferCoordinator& coordinator, LateDeadline& deadline)
    : m_coordinator(coordinator),
      m_holdsLock(coordinator.m_lock.tryLock() || coordinator.m_lock.tryLockUntil(timePoint(deadline.get())))
{}

BufferAccess::~BufferAccess()
{
    if (!m_holdsLock)
        return;
    if (m_notifyOnRelease)
        m_coordinator.m_lock.unlockAndWakeOne();
    else
        m_coordinator.m_lock.unlock();
}

void BufferAccess::publish(const std::weak_ptr<Buffer>& buffer)
{
    std::weak_ptr<Buffer> entry = freeQueue().remove(buffer);
    if (entry.expired())
        entry = buffer;
    readyQueue().push(std::move(entry));
    m_notifyOnRelease = true;
}

void BufferAccess::takeOldestReady()
{
    forgetCurrent();
    while (currentBuffer().expired() && !readyQueue().isEmpty())
        m_coordinator.m_currentBuffer = readyQueue().popFront();
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
    m_coordinator.m_lock.waitUntil(timePoint(deadline));
}

std::shared_ptr<Buffer> BufferAccess::popOldestReady()
{
    while (!readyQueue().isEmpty())
        if (auto buffer = readyQueue().popFront().lock())
            return buffer;
    return nullptr;
}

}   // namespace orvo::cognex

#include "acquisition/buffers/BufferCoordinator.h"

#include "acquisition/buffers/BufferAccess.h"

namespace orvo::cognex {

BufferCoordinator::BufferCoordinator()
    : m_freeQueue(std::make_shared<BufferQueue>()), m_readyQueue(std::make_shared<BufferQueue>())
{}

std::shared_ptr<BufferAccess> BufferCoordinator::lock()
{
    try {
        return std::make_shared<BufferAccess>(*this);
    } catch (...) {   // whatever it was: no access is the one answer that the callers know
        return nullptr;
    }
}

std::shared_ptr<BufferAccess> BufferCoordinator::tryLockUntil(Ticks deadline)
{
    try {
        return std::make_shared<BufferAccess>(*this, deadline);
    } catch (...) {
        return nullptr;
    }
}

}   // namespace orvo::cognex

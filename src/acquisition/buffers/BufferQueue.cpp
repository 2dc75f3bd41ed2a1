#include "acquisition/buffers/BufferQueue.h"

#include <algorithm>

namespace orvo::cognex {

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

}   // namespace orvo::cognex

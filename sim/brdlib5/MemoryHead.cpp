#include "sim/brdlib5/MemoryHead.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "sim/brdlib5/BrdError.h"

namespace orvo::sim {

MemoryHead::MemoryHead(uint64_t symbol, int64_t blockCount) : m_symbol(symbol), m_blockCount(blockCount) {}

void MemoryHead::add(void* address, uint64_t size, int64_t index)
{
    const os::MutexLock lock(m_mutex);
    refuseInUse();
    if (index < 0 || index >= m_blockCount)
        throw BrdError(kUnknownBlock, "The memory head was made for " + std::to_string(m_blockCount) +
                                          " buffers and has none of index " + std::to_string(index));
    if (!address && size > 0)
        throw BrdError(kNullArgument, "The buffer is null");
    if (!m_blocks.try_emplace(index, Block{address, size}).second)
        throw BrdError(kUnknownBlock, "There is a buffer of index " + std::to_string(index) + " already");
    ++m_freeCount;
}

void MemoryHead::remove(int64_t index)
{
    const os::MutexLock lock(m_mutex);
    refuseInUse();
    Block& block = blockAt(index);
    forgetPicture(block);
    m_freeCount -= block.state == State::Free;
    m_blocks.erase(index);
}

void MemoryHead::giveBack(int64_t index)
{
    const os::MutexLock lock(m_mutex);
    Block& block = blockAt(index);
    if (block.state == State::Blocked)   // one that is just being filled isn't the caller's to give
        free(block);
}

void MemoryHead::requireIdle() const
{
    const os::MutexLock lock(m_mutex);
    refuseInUse();
}

void MemoryHead::beginUse()
{
    const os::MutexLock lock(m_mutex);
    refuseInUse();
    if (m_blocks.empty())
        throw BrdError(kUnknownBlock, "The memory head has no buffers");
    m_inUse = true;
    for (auto& [index, block] : m_blocks)
        forgetPicture(block);
}

void MemoryHead::endUse()
{
    const os::MutexLock lock(m_mutex);
    m_inUse = false;
}

size_t MemoryHead::freeCount() const
{
    const os::MutexLock lock(m_mutex);
    return m_freeCount;
}

std::optional<MemoryHead::Taken> MemoryHead::takeNext()
{
    const os::MutexLock lock(m_mutex);
    if (m_freeCount == 0)
        return std::nullopt;
    auto next = m_blocks.upper_bound(m_lastTaken);
    while (next == m_blocks.end() || next->second.state != State::Free)
        next = next == m_blocks.end() ? m_blocks.begin() : std::next(next);
    Block& block = next->second;
    forgetPicture(block);
    block.state = State::Filling;
    --m_freeCount;
    m_lastTaken = next->first;
    return Taken{next->first, {static_cast<std::byte*>(block.address), static_cast<size_t>(block.size)}};
}

void MemoryHead::publish(int64_t index, int64_t picture, uint64_t timestamp)
{
    const os::MutexLock lock(m_mutex);
    Block& block = blockAt(index);
    block.state = State::Blocked;
    block.picture = picture;
    block.timestamp = timestamp;
    m_indexOfPicture[picture] = index;
}

void MemoryHead::putBack(int64_t index)
{
    const os::MutexLock lock(m_mutex);
    free(blockAt(index));
}

std::optional<MemoryHead::Found> MemoryHead::find(int64_t picture) const
{
    const os::MutexLock lock(m_mutex);
    const auto found = m_indexOfPicture.find(picture);
    if (found == m_indexOfPicture.end())
        return std::nullopt;
    const Block& block = m_blocks.at(found->second);
    return Found{found->second, block.address, block.timestamp};
}

std::optional<int64_t> MemoryHead::indexOf(const void* address) const
{
    const os::MutexLock lock(m_mutex);
    const auto found = std::find_if(m_blocks.begin(), m_blocks.end(),
                                    [&](const auto& entry) { return entry.second.address == address; });
    return found == m_blocks.end() ? std::nullopt : std::optional(found->first);
}

void MemoryHead::refuseInUse() const
{
    if (m_inUse)
        throw BrdError(kHeadInUse, "The memory head is used by a running acquisition");
}

MemoryHead::Block& MemoryHead::blockAt(int64_t index)
{
    const auto found = m_blocks.find(index);
    if (found == m_blocks.end())
        throw BrdError(kUnknownBlock, "The memory head has no buffer of index " + std::to_string(index));
    return found->second;
}

void MemoryHead::forgetPicture(Block& block)
{
    if (block.picture != 0)
        m_indexOfPicture.erase(block.picture);
    block.picture = 0;
}

void MemoryHead::free(Block& block)
{
    block.state = State::Free;
    ++m_freeCount;
}

}   // namespace orvo::sim

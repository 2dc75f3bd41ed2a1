#pragma once

#include <cstddef>
#include <memory>
#include <vector>

namespace orvo::cognex {

class Buffer;

/// Buffers in order of arrival, oldest first. Owns none of them. Guarded by the lock of its
/// BufferCoordinator.
class BufferQueue {
public:
    void push(std::weak_ptr<Buffer> buffer) { m_buffers.push_back(std::move(buffer)); }
    /// Removes the oldest entry, gone or not. The queue must not be empty.
    std::weak_ptr<Buffer> popFront();
    /// Takes out the first entry of the same buffer; empty if there is none.
    std::weak_ptr<Buffer> remove(const std::weak_ptr<Buffer>& buffer);
    void clear() { m_buffers.clear(); }
    bool isEmpty() const { return m_buffers.empty(); }
    /// Room for so many entries, so that push() allocates nothing on the callback thread.
    void reserve(size_t count) { m_buffers.reserve(count); }

private:
    std::vector<std::weak_ptr<Buffer>> m_buffers;
};

}   // namespace orvo::cognex

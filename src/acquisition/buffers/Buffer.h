#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <utility>

namespace orvo::cognex {

/// One block of host memory of the size of an image; the board writes into it by DMA. Owned by its DMA port
/// alone: all others hold weak pointers, which a rebuilt ring expires at once.
class Buffer {
public:
    using Callback = std::function<void(Buffer*)>;

    /// Takes the block from the C heap. An exhausted heap leaves data() null, which the board refuses.
    explicit Buffer(uint64_t size);
    Buffer(const Buffer&) = delete;
    Buffer& operator=(const Buffer&) = delete;
    ~Buffer();

    void* data() const { return m_data; }
    /// In bytes.
    uint64_t size() const { return m_size; }
    /// When the board took the image that the block holds, in ticks of the board's "TimestampFrequency".
    uint64_t timestamp() const { return m_timestamp; }
    /// The place in the ring, from 0; -1 before it has one.
    int64_t number() const { return m_number; }

    void setTimestamp(uint64_t timestamp) { m_timestamp = timestamp; }
    void setNumber(int64_t number) { m_number = number; }
    void setUnblockCallback(Callback callback) { m_unblockCallback = std::move(callback); }
    /// Nothing calls it.
    void setReservedCallback(Callback callback) { m_reservedCallback = std::move(callback); }

    /// Gives the block back to the board. Throws std::bad_function_call if no callback was set.
    void unblock() { m_unblockCallback(this); }

private:
    void* m_data;
    uint64_t m_size;
    uint64_t m_timestamp = 0;
    int64_t m_number = -1;
    Callback m_reservedCallback;
    Callback m_unblockCallback;
};

/// Throws Pending if the buffer has gone with its ring.
std::shared_ptr<Buffer> locked(const std::weak_ptr<Buffer>& buffer);

}   // namespace orvo::cognex

#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "aik/aik.hpp"
#include "os/ThreadSafety.h"

namespace orvo::aikctl {

struct SavedPictures;

/// A fetched picture on its way to a file, with the memory that holds its bytes.
struct QueuedPicture {
    explicit QueuedPicture(size_t bytes) : memory(new uint8_t[bytes]), size(bytes) {}

    const std::unique_ptr<uint8_t[]> memory;
    const size_t size;      // of the memory, in bytes
    aik::Picture picture;   // its bytes are in the memory
    uint64_t number = 0;    // in its channel, from 1
    std::chrono::system_clock::time_point fetchedAt;
    SavedPictures* saved = nullptr;   // the pictures of its channel
};

/// Pictures between the threads that fetch and those that save, and their memory, which is used again.
/// Threads: any.
class PictureQueue {
public:
    using Item = std::unique_ptr<QueuedPicture>;

    /// `limit`: the most bytes of memory in use. A single picture may be larger.
    explicit PictureQueue(uint64_t limit) : m_limit(limit) {}

    /// Memory for a picture of this size, which then goes to put() or giveBack(). Waits for room behind those who
    /// wait already, until `isGivenUp`, which is asked now and then and doesn't call the queue; then null. Throws
    /// bad_alloc.
    Item room(size_t size, const std::function<bool()>& isGivenUp);
    void put(Item picture);
    /// The oldest picture, which then goes to giveBack(). Waits for one; null if the queue is closed and empty.
    Item take();
    void giveBack(Item picture);
    /// No picture will be put any more.
    void close();

private:
    bool hasRoom(size_t size) const ORVO_REQUIRES(m_mutex) { return m_used == 0 || m_used + size <= m_limit; }
    Item spare(size_t size) ORVO_REQUIRES(m_mutex);

    const uint64_t m_limit;
    os::Mutex m_mutex;
    std::condition_variable m_hasRoom;
    std::condition_variable m_hasPicture;
    std::deque<Item> m_pictures ORVO_GUARDED_BY(m_mutex);
    std::vector<Item> m_spare ORVO_GUARDED_BY(m_mutex);   // memory that nobody uses
    uint64_t m_used ORVO_GUARDED_BY(m_mutex) = 0;         // bytes, of pictures and of memory handed out
    uint64_t m_spareBytes ORVO_GUARDED_BY(m_mutex) = 0;
    std::deque<uint64_t> m_turns ORVO_GUARDED_BY(m_mutex);   // of those who wait for room, the longest first
    uint64_t m_nextTurn ORVO_GUARDED_BY(m_mutex) = 0;
    bool m_isClosed ORVO_GUARDED_BY(m_mutex) = false;
};

}   // namespace orvo::aikctl

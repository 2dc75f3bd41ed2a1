#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <unordered_map>

#include "os/ThreadSafety.h"

namespace orvo::sim {

/// Image numbers name what picture numbers name, but are other numbers: a caller that takes the one for the
/// other finds nothing.
inline constexpr int64_t kFirstImageNumber = 1'000'000'000;

constexpr int64_t imageOfPicture(int64_t pictureNumber)
{
    return kFirstImageNumber + pictureNumber;
}

constexpr int64_t pictureOfImage(int64_t imageNumber)
{
    return imageNumber < kFirstImageNumber ? 0 : imageNumber - kFirstImageNumber;   // 0: no picture
}

/// A ring of blocks that the caller owns. A block is free until the board takes it, blocked from then until
/// the caller gives it back, whatever starts and stops meanwhile. Nothing here touches a block's memory.
/// Threads: any.
class MemoryHead {
public:
    /// A block on its way from the board to the caller.
    struct Taken {
        int64_t index;
        std::span<std::byte> memory;
    };

    /// `symbol`: the h-number in the journal.
    MemoryHead(uint64_t symbol, int64_t blockCount);

    uint64_t symbol() const { return m_symbol; }

    /// The caller's side. All throw BrdError; a ring that a DMA is using doesn't change.
    void add(void* address, uint64_t size, int64_t index);
    void remove(int64_t index);
    void giveBack(int64_t index);
    void requireIdle() const;

    /// A DMA begins to use the ring and forgets which pictures its blocks hold. Throws BrdError for a ring
    /// without blocks and for one that another DMA uses.
    void beginUse();
    void endUse();

    size_t freeCount() const;
    /// The next free block after the last taken one, to be filled; nothing if none is free.
    std::optional<Taken> takeNext();
    /// The taken block holds a picture now.
    void publish(int64_t index, int64_t picture, uint64_t timestamp);
    /// The taken block holds nothing, and is free again.
    void putBack(int64_t index);

    /// The block that holds a picture: until it is taken again, given back or not.
    struct Found {
        int64_t index;
        void* address;
        uint64_t timestamp;
    };
    std::optional<Found> find(int64_t picture) const;
    /// The index of the block at an address, for the journal.
    std::optional<int64_t> indexOf(const void* address) const;

private:
    enum class State { Free, Filling, Blocked };

    struct Block {
        void* address;
        uint64_t size;
        State state = State::Free;
        int64_t picture = 0;   // 0: none
        uint64_t timestamp = 0;
    };

    void refuseInUse() const ORVO_REQUIRES(m_mutex);
    Block& blockAt(int64_t index) ORVO_REQUIRES(m_mutex);
    void forgetPicture(Block& block) ORVO_REQUIRES(m_mutex);
    void free(Block& block) ORVO_REQUIRES(m_mutex);

    const uint64_t m_symbol;
    const int64_t m_blockCount;

    mutable os::Mutex m_mutex;
    std::map<int64_t, Block> m_blocks ORVO_GUARDED_BY(m_mutex);
    std::unordered_map<int64_t, int64_t> m_indexOfPicture ORVO_GUARDED_BY(m_mutex);
    size_t m_freeCount ORVO_GUARDED_BY(m_mutex) = 0;
    int64_t m_lastTaken ORVO_GUARDED_BY(m_mutex) = -1;
    bool m_inUse ORVO_GUARDED_BY(m_mutex) = false;
};

}   // namespace orvo::sim

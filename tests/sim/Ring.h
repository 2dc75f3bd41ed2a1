#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/brdlib5/brdlib5.h"
#include "tests/sim/PictureRecorder.h"

namespace orvo::test {

/// One DMA of an open board with a ring of our own blocks, as a port has it.
class Ring {
public:
    Ring(void* board, uint32_t dma, size_t blocks, size_t blockSize);

    void* head() const { return m_head; }
    const std::vector<std::byte>& block(size_t index) const { return m_blocks[index]; }
    uint8_t byte(size_t blockIndex, size_t position) const;

    int32_t listen(PictureRecorder& recorder) const;
    int32_t start(int64_t pictureCount = -1) const;
    int32_t stop() const;
    /// Blocks are counted from 0 here.
    int32_t giveBack(int64_t blockIndex) const;
    int64_t lost() const;
    int64_t free() const;
    /// The index of the block that holds the picture, -1 for none.
    int64_t blockOf(int64_t pictureNumber) const;
    uint64_t timestampOf(int64_t pictureNumber) const;

private:
    void* const m_board;
    const uint32_t m_dma;
    std::vector<std::vector<std::byte>> m_blocks;
    void* const m_head;
};

}   // namespace orvo::test

#include "tests/sim/Ring.h"

namespace orvo::test {

Ring::Ring(void* board, uint32_t dma, size_t blocks, size_t blockSize)
    : m_board(board),
      m_dma(dma),
      m_blocks(blocks, std::vector<std::byte>(blockSize)),
      m_head(Brd_AllocMemHead(board, blocks * blockSize, static_cast<int64_t>(blocks)))
{
    for (size_t i = 0; i < blocks; ++i)
        Brd_AddMem(board, m_blocks[i].data(), blockSize, static_cast<int64_t>(i), m_head);
}

uint8_t Ring::byte(size_t blockIndex, size_t position) const
{
    return static_cast<uint8_t>(m_blocks[blockIndex][position]);
}

int32_t Ring::listen(PictureRecorder& recorder) const
{
    BrdApcControl control = recorder.control();
    const int32_t status = Brd_registerApcHandler(m_board, m_dma, &control, 0);
    control = {};   // the library has a copy
    return status;
}

int32_t Ring::start(int64_t pictureCount) const
{
    return Brd_AcquireEx(m_board, m_dma, pictureCount, 2, m_head);
}

int32_t Ring::stop() const
{
    return Brd_stopAcquireEx(m_board, m_dma, m_head, 0);
}

int32_t Ring::giveBack(int64_t blockIndex) const
{
    return Brd_setStatusEx(m_board, 512, blockIndex + 1, m_dma, m_head);
}

int64_t Ring::lost() const
{
    return Brd_getStatusEx(m_board, 30, 0, m_dma, m_head);
}

int64_t Ring::free() const
{
    return Brd_getStatusEx(m_board, 40, 0, m_dma, m_head);
}

int64_t Ring::blockOf(int64_t pictureNumber) const
{
    const void* const address = Brd_getImagePtrEx(m_board, pictureNumber, m_dma, m_head);
    for (size_t i = 0; i < m_blocks.size(); ++i)
        if (m_blocks[i].data() == address)
            return static_cast<int64_t>(i);
    return -1;
}

uint64_t Ring::timestampOf(int64_t pictureNumber) const
{
    uint64_t stamp = 0;
    const int64_t image = Brd_getImageEx(m_board, 220, pictureNumber, m_dma, 0, m_head);
    Brd_getParameterEx(m_board, 22030, &stamp, m_dma, m_head, image);
    return stamp;
}

}   // namespace orvo::test

#include "tests/sim/SimulatedBoards.h"

#include <algorithm>

namespace orvo::test {

BoardRing::BoardRing(void* board, uint32_t dma, size_t blockCount, size_t blockSize)
    : m_board(board),
      m_dma(dma),
      blocks(blockCount, Bytes(blockSize)),
      head(Brd_AllocMemHead(board, blockCount * blockSize, static_cast<int64_t>(blockCount)))
{
    int64_t index = 0;
    for (Bytes& block : blocks)
        Brd_AddMem(board, block.data(), blockSize, index++, head);
}

void BoardRing::listen(std::function<void(int64_t)> called)
{
    m_called = std::move(called);
    const auto onPicture = [](int64_t picture, void* ring) {
        static_cast<BoardRing*>(ring)->m_called(picture);
        return 0;
    };
    BrdApcControl control{0, onPicture, this, 0x7fffffff, 32};
    EXPECT_EQ(0, Brd_registerApcHandler(m_board, m_dma, &control, 0));
    control = {};   // the library has a copy
}

int64_t BoardRing::blockOf(int64_t picture) const
{
    const void* const address = Brd_getImagePtrEx(m_board, picture, m_dma, head);
    const auto found = std::find_if(blocks.begin(), blocks.end(),
                                    [&](const Bytes& block) { return block.data() == address; });
    return found == blocks.end() ? -1 : found - blocks.begin();
}

int64_t BoardRing::timestampOf(int64_t picture) const
{
    int64_t stamp = 0;
    const int64_t image = Brd_getImageEx(m_board, 220, picture, m_dma, 0, head);
    Brd_getParameterEx(m_board, 22030, &stamp, m_dma, head, image);
    return stamp;
}

SimulatedBoards::SimulatedBoards()
{
    OrvoSim_setManual(0);
    machine.boards({Machine::grabber(0), Machine::grabber(1, 1872)});
}

SimulatedBoards::~SimulatedBoards()
{
    OrvoSim_clearScript();
    endSession();
}

void SimulatedBoards::beginSession()
{
    if (!std::exchange(m_isInSession, true))
        Brd_InitLibraries(nullptr);
}

void SimulatedBoards::endSession()
{
    if (std::exchange(m_isInSession, false))
        Brd_FreeLibraries();
}

void* SimulatedBoards::open(uint32_t boardIndex, const std::string& applet)
{
    beginSession();
    return Brd_InitEx(machine.file("applet.hap", applet).c_str(), boardIndex, 0);
}

uint32_t SimulatedBoards::parameter(void* board, int32_t id, uint32_t dma)
{
    uint32_t value = 0;
    EXPECT_EQ(0, Brd_getParameter(board, id, &value, dma)) << lastError(board);
    return value;
}

void SimulatedBoards::setParameter(void* board, int32_t id, uint32_t value)
{
    EXPECT_EQ(0, Brd_setParameter(board, id, &value, 0)) << lastError(board);
}

OrvoSim_Ledger SimulatedBoards::ledger(uint32_t dma)
{
    OrvoSim_Ledger numbers{};
    OrvoSim_readLedger(0, dma, &numbers);
    return numbers;
}

}   // namespace orvo::test

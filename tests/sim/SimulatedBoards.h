#pragma once

#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "os/Program.h"
#include "sim/brdlib5/brdlib5.h"
#include "sim/orvo_sim.h"
#include "tests/support/Machine.h"

namespace orvo::test {

using Bytes = std::vector<uint8_t>;

/// Bounds every wait; only a test that fails takes so long.
inline constexpr uint32_t kGenerousMs = 60'000;

/// A DMA of an open board with a ring of the test's own blocks, numbered from 0. Its end stops the DMA.
class BoardRing {
public:
    BoardRing(void* board, uint32_t dma, size_t blockCount, size_t blockSize)
        : blocks(blockCount, Bytes(blockSize, kUntouched)),
          head(Brd_AllocMemHead(board, blockCount * blockSize, static_cast<int64_t>(blockCount))),
          m_board(board),
          m_dma(dma)
    {
        int64_t index = 0;
        for (Bytes& block : blocks)
            Brd_AddMem(board, block.data(), blockSize, index++, head);
    }
    BoardRing(const BoardRing&) = delete;
    ~BoardRing() { stop(); }

    int32_t start(int64_t pictureCount = -1) const
    {
        return Brd_AcquireEx(m_board, m_dma, pictureCount, 2, head);
    }
    int32_t stop() const { return Brd_stopAcquireEx(m_board, m_dma, head, 0); }

    /// `called` runs within each image callback.
    void listen(std::function<void(int64_t)> called)
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

    int32_t giveBack(int64_t block) const { return Brd_setStatusEx(m_board, 512, block + 1, m_dma, head); }
    int64_t lost() const { return Brd_getStatusEx(m_board, 30, 0, m_dma, head); }
    int64_t free() const { return Brd_getStatusEx(m_board, 40, 0, m_dma, head); }
    /// The block that holds the picture, -1 for none.
    int64_t blockOf(int64_t picture) const
    {
        const void* const address = Brd_getImagePtrEx(m_board, picture, m_dma, head);
        const auto found = std::find_if(blocks.begin(), blocks.end(),
                                        [&](const Bytes& block) { return block.data() == address; });
        return found == blocks.end() ? -1 : found - blocks.begin();
    }
    /// The picture's time stamp, counted from that of the first.
    int64_t microsecondsAt(int64_t picture) const { return (timestampOf(picture) - timestampOf(1)) / 125; }

    static constexpr uint8_t kUntouched = 0xEE;
    std::vector<Bytes> blocks;
    void* const head;

private:
    int64_t timestampOf(int64_t picture) const
    {
        int64_t stamp = 0;
        const int64_t image = Brd_getImageEx(m_board, 220, picture, m_dma, 0, head);
        Brd_getParameterEx(m_board, 22030, &stamp, m_dma, head, image);
        return stamp;
    }

    void* const m_board;
    const uint32_t m_dma;
    std::function<void(int64_t)> m_called;
};

/// One board of either family, 0 and 1, without cameras unless a test describes others. Pictures come by
/// themselves. Ends every session that a test began.
class SimulatedBoards : public testing::Test {
protected:
    SimulatedBoards()
    {
        OrvoSim_setManual(0);
        machine.boards({Machine::grabber(0), Machine::grabber(1, 1872)});
    }
    ~SimulatedBoards() override
    {
        OrvoSim_clearScript();
        endSession();
    }

    /// The boards file, for sessions that begin after it.
    void describe(const std::string& text) { useBoardsFile(machine.file("boards.json", text)); }
    /// A boards file with one board, which has these members besides its index 0 and a type.
    void describeBoard(const std::string& members)
    {
        describe(R"({"boards": [{"index": 0, "type": 2897, )" + members + "}]}");
    }
    static void useBoardsFile(const std::string& path)
    {
        os::setEnvironmentVariable("ORVO_SIM_BOARDS", path);
    }

    void beginSession()
    {
        if (!std::exchange(m_isInSession, true))
            Brd_InitLibraries(nullptr);
    }
    void endSession()
    {
        if (std::exchange(m_isInSession, false))
            Brd_FreeLibraries();
    }

    /// Opens a board with an applet of that description, in a session that is begun if there is none.
    void* open(uint32_t boardIndex, const std::string& applet = "{}")
    {
        beginSession();
        return Brd_InitEx(machine.file("applet.hap", applet).c_str(), boardIndex, 0);
    }

    static std::string lastError(void* board = nullptr) { return Brd_getLastErrorDescription(board); }
    static uint32_t parameter(void* board, int32_t id, uint32_t value = 0)
    {
        EXPECT_EQ(0, Brd_getParameter(board, id, &value, 0)) << lastError(board);
        return value;
    }
    static void setParameter(void* board, int32_t id, uint32_t value)
    {
        EXPECT_EQ(0, Brd_setParameter(board, id, &value, 0)) << lastError(board);
    }

    // Of the first board.
    static OrvoSim_Ledger ledger(uint32_t dma = 0)
    {
        OrvoSim_Ledger numbers{};
        OrvoSim_readLedger(0, dma, &numbers);
        return numbers;
    }
    static bool waitForDelivered(uint64_t count, uint32_t dma = 0)
    {
        return OrvoSim_waitForDelivered(0, dma, count, kGenerousMs) == 1;
    }

    Machine machine;

private:
    bool m_isInSession = false;
};

}   // namespace orvo::test

#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "os/ThreadSafety.h"
#include "sim/brdlib5/Board.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

/// The latest failure of each board, and of the calls that have none. Threads: any.
class LastErrors {
public:
    static constexpr size_t kNoBoard = 8;   // the slot after those of the board indices

    void clear();
    void set(size_t slot, int32_t number, std::string_view text);
    int32_t number(size_t slot) const;
    /// Copies the text, cut if need be, with a NUL.
    void copyText(size_t slot, std::span<char> buffer) const;

private:
    struct Entry {
        int32_t number = 0;
        std::string text;
    };

    mutable os::Mutex m_mutex;
    std::array<Entry, kNoBoard + 1> m_entries ORVO_GUARDED_BY(m_mutex);
};

/// The library as a whole: its sessions, the open boards by handle, the failures. Handles are numbers that
/// are never given out twice, so an ended one is recognised. Threads: any, but init() and free() only one.
/// No lock is held while a board is loaded or stopped.
class Library final : public PictureDelivery {
public:
    static constexpr uint32_t kMostBoards = 8;

    /// Made at the first call and never destroyed: pictures may flow while the process ends.
    static Library& instance();

    void init();
    void free();

    /// Negative for an index without a board, and outside of a session.
    int32_t boardType(int32_t boardIndex) const;
    std::string boardText(int32_t boardIndex) const;

    /// Loads an applet onto a board; returns the handle. Throws BrdError.
    void* open(const std::string& path, uint32_t boardIndex);
    void close(void* handle);
    /// Throws BrdError for a handle of no open board.
    std::shared_ptr<Board> board(const void* handle) const;

    /// Makes a memory head and returns its handle. Throws BrdError.
    void* addHead(const void* boardHandle, uint64_t totalSize, int64_t blockCount);

    /// The failures of the board of a handle, or of calls without one.
    void setLastError(const void* handle, int32_t number, std::string_view text);
    int32_t lastErrorNumber(const void* handle) const;
    void copyLastErrorText(const void* handle, std::span<char> buffer) const;

    int32_t deliver(uint32_t boardIndex, uint32_t dma, uint32_t count) override;
    int32_t callBack(uint32_t boardIndex, uint32_t dma, int64_t pictureNumber) override;

private:
    struct Slot {
        uint64_t handle = 0;   // 0: free, also while the board is being loaded
        std::shared_ptr<Board> board;
        bool isTaken = false;
    };

    Library() = default;
    BoardDescription described(uint32_t boardIndex) const;
    Applet loadApplet(const std::string& path, uint32_t boardIndex, int32_t type) const;
    /// LastErrors::kNoBoard for a handle of no open board.
    size_t slotOf(const void* handle) const ORVO_REQUIRES(m_mutex);
    size_t errorSlotOf(const void* handle) const;
    std::shared_ptr<Board> boardAt(uint32_t boardIndex) const;
    /// What `action` returns for the DMA, or ORVO_SIM_NOT_RUNNING if there is no such board or DMA.
    template <typename Action>
    int32_t withDma(uint32_t boardIndex, uint32_t dma, Action&& action) const;
    void release(uint32_t boardIndex);

    LastErrors m_errors;

    mutable os::Mutex m_mutex;
    std::array<Slot, kMostBoards> m_slots ORVO_GUARDED_BY(m_mutex);
    uint32_t m_users ORVO_GUARDED_BY(m_mutex) = 0;
    uint64_t m_openings ORVO_GUARDED_BY(m_mutex) = 0;   // since the process began: part of a board's handle
    uint64_t m_sessions ORVO_GUARDED_BY(m_mutex) = 0;   // likewise, of a memory head's
    uint64_t m_heads ORVO_GUARDED_BY(m_mutex) = 0;      // made in this session
};

}   // namespace orvo::sim

#include "sim/brdlib5/Library.h"

#include <algorithm>
#include <bit>
#include <string_view>
#include <utility>

#include "sim/brdlib5/BrdError.h"
#include "sim/json/Json.h"
#include "sim/orvo_sim.h"
#include "sim/seam/BoardTypes.h"

namespace orvo::sim {

namespace {

constexpr uint64_t kLargestRing = uint64_t{64} << 30;   // bytes; a negative size is above it
constexpr int64_t kMostBlocks = 1'000'000;
constexpr int32_t kNoSuchBoard = -1;

uint64_t numberOf(const void* handle)
{
    return std::bit_cast<uintptr_t>(handle);
}

void* handleOf(uint64_t number)
{
    return std::bit_cast<void*>(static_cast<uintptr_t>(number));
}

}   // namespace

Library& Library::instance()
{
    static auto* const only = new Library;
    return *only;
}

void Library::init()
{
    {
        const os::MutexLock lock(m_mutex);
        if (m_users++ > 0)
            return;
        ++m_sessions;
        m_heads = 0;
    }
    m_errors.clear();
    orvo_sim_core()->beginSession();
    orvo_sim_core()->setDelivery(*this);
}

void Library::free()
{
    {
        const os::MutexLock lock(m_mutex);
        if (m_users == 0 || --m_users > 0)
            return;
    }
    for (uint32_t index = 0; index < kMostBoards; ++index)
        release(index);
    orvo_sim_core()->endSession();
}

int32_t Library::boardType(int32_t boardIndex) const
{
    {
        const os::MutexLock lock(m_mutex);
        if (m_users == 0)
            return kNoSuchBoard;
    }
    BoardDescription description;
    return orvo_sim_core()->findBoard(static_cast<uint32_t>(boardIndex), description) ? description.type
                                                                                      : kNoSuchBoard;
}

std::string Library::boardText(int32_t boardIndex) const
{
    const BoardDescription description = described(static_cast<uint32_t>(boardIndex));
    return boardNameOf(description.type) + ", serial number " + description.serial + ", simulated";
}

BoardDescription Library::described(uint32_t boardIndex) const
{
    BoardDescription description;
    if (boardType(static_cast<int32_t>(boardIndex)) < 0 ||
        !orvo_sim_core()->findBoard(boardIndex, description))
        throw BrdError(kNoBoard, "There is no board of index " + std::to_string(boardIndex));
    return description;
}

void* Library::open(const std::string& path, uint32_t boardIndex)
{
    const BoardDescription description = described(boardIndex);
    const std::string_view problem = orvo_sim_core()->boardsFileError();
    if (!problem.empty())
        throw BrdError(kBadBoardsFile, std::string(problem));
    {
        const os::MutexLock lock(m_mutex);
        if (std::exchange(m_slots[boardIndex].isTaken, true))
            throw BrdError(kBoardInUse, "Board " + std::to_string(boardIndex) + " is open already");
    }
    try {
        Applet applet = loadApplet(path, boardIndex, description.type);
        auto board = std::make_shared<Board>(boardIndex, description, std::move(applet));
        const os::MutexLock lock(m_mutex);
        Slot& slot = m_slots[boardIndex];
        slot.board = std::move(board);
        slot.handle = ++m_openings << 8 | boardIndex << 4 | 8;
        m_errors.set(boardIndex, 0, "");
        orvo_sim_core()->setBoardHandle(boardIndex, slot.handle);
        return handleOf(slot.handle);
    } catch (...) {   // whatever it was, the board can be opened again
        release(boardIndex);
        throw;
    }
}

Applet Library::loadApplet(const std::string& path, uint32_t boardIndex, int32_t type) const
{
    try {
        return Applet::read(path, type);
    } catch (const JsonError& error) {
        orvo_sim_core()->say("board " + std::to_string(boardIndex) + ": " + error.what());
        throw BrdError(kBadApplet, error.what());
    }
}

void Library::close(void* handle)
{
    const std::shared_ptr<Board> closing = board(handle);
    closing->stopAll();   // the handle still works for callbacks that are under way
    release(closing->index());
}

void Library::release(uint32_t boardIndex)
{
    if (const std::shared_ptr<Board> board = boardAt(boardIndex))
        board->stopAll();
    orvo_sim_core()->setBoardHandle(boardIndex, 0);
    const os::MutexLock lock(m_mutex);
    m_slots[boardIndex] = {};
}

std::shared_ptr<Board> Library::board(const void* handle) const
{
    const os::MutexLock lock(m_mutex);
    const size_t slot = slotOf(handle);
    if (slot == LastErrors::kNoBoard)
        throw BrdError(kUnknownHandle,
                       handle ? "This is no handle of an open board" : "The board's handle is null");
    return m_slots[slot].board;
}

size_t Library::slotOf(const void* handle) const
{
    const size_t index = numberOf(handle) >> 4 & 0xF;
    const bool isOpen = handle && index < m_slots.size() && m_slots[index].handle == numberOf(handle);
    return isOpen ? index : LastErrors::kNoBoard;
}

size_t Library::errorSlotOf(const void* handle) const
{
    const os::MutexLock lock(m_mutex);
    return slotOf(handle);
}

std::shared_ptr<Board> Library::boardAt(uint32_t boardIndex) const
{
    const os::MutexLock lock(m_mutex);
    return boardIndex < m_slots.size() ? m_slots[boardIndex].board : nullptr;
}

void* Library::addHead(const void* boardHandle, uint64_t totalSize, int64_t blockCount)
{
    const std::shared_ptr<Board> owner = board(boardHandle);
    if (blockCount < 0)
        throw BrdError(kOutOfRange, "A ring of " + std::to_string(blockCount) + " buffers can't be made");
    if (totalSize > kLargestRing)
        throw BrdError(kTooLarge, "A ring of " + std::to_string(totalSize) + " bytes is above 64 GiB");
    if (blockCount > kMostBlocks)
        throw BrdError(kTooLarge, "A ring of " + std::to_string(blockCount) + " buffers is above " +
                                      std::to_string(kMostBlocks));
    uint64_t symbol = 0, session = 0;
    {
        const os::MutexLock lock(m_mutex);
        symbol = ++m_heads;
        session = m_sessions;
    }
    void* const head = handleOf(session << 40 | symbol << 4);
    owner->addHead(head, std::make_shared<MemoryHead>(symbol, blockCount));
    return head;
}

void Library::setLastError(const void* handle, int32_t number, std::string_view text)
{
    m_errors.set(errorSlotOf(handle), number, text);
}

int32_t Library::lastErrorNumber(const void* handle) const
{
    return m_errors.number(errorSlotOf(handle));
}

void Library::copyLastErrorText(const void* handle, std::span<char> buffer) const
{
    m_errors.copyText(errorSlotOf(handle), buffer);
}

int32_t Library::deliver(uint32_t boardIndex, uint32_t dma, uint32_t count)
{
    return withDma(boardIndex, dma, [&](DmaChannel& channel) { return channel.deliver(count); });
}

int32_t Library::callBack(uint32_t boardIndex, uint32_t dma, int64_t pictureNumber)
{
    return withDma(boardIndex, dma, [&](DmaChannel& channel) { return channel.callBack(pictureNumber); });
}

template <typename Action>
int32_t Library::withDma(uint32_t boardIndex, uint32_t dma, Action&& action) const
{
    try {
        const auto board = boardAt(boardIndex);
        return board ? action(board->dma(dma)) : ORVO_SIM_NOT_RUNNING;
    } catch (const BrdError&) {   // no such DMA
        return ORVO_SIM_NOT_RUNNING;
    }
}

void LastErrors::clear()
{
    const os::MutexLock lock(m_mutex);
    m_entries = {};
}

void LastErrors::set(size_t slot, int32_t number, std::string_view text)
{
    const os::MutexLock lock(m_mutex);
    m_entries[slot] = {number, std::string(text)};
}

int32_t LastErrors::number(size_t slot) const
{
    const os::MutexLock lock(m_mutex);
    return m_entries[slot].number;
}

void LastErrors::copyText(size_t slot, std::span<char> buffer) const
{
    const os::MutexLock lock(m_mutex);
    const size_t length = std::min(m_entries[slot].text.size(), buffer.size() - 1);
    std::copy_n(m_entries[slot].text.data(), length, buffer.data());
    buffer[length] = '\0';
}

}   // namespace orvo::sim

#include <string>

#include "sim/brdlib5/Call.h"
#include "sim/brdlib5/MemoryHead.h"
#include "sim/brdlib5/Outcomes.h"
#include "sim/brdlib5/brdlib5.h"

using namespace orvo::sim;

namespace {

constexpr int32_t kBlockingMode = 2;   // a delivered picture stays blocked until it is given back
constexpr int32_t kImageOfPicture = 220;
constexpr int32_t kLostPictures = 30;
constexpr int32_t kFreeBlocks = 40;
constexpr int32_t kGiveBack = 512;

void stopDma(const void* board, uint32_t dma)
{
    Library::instance().board(board)->dma(dma).stop();
}

/// It stops also when the script wants it to fail: a caller that gives up then frees its blocks.
struct StopOutcome : PlainOutcome<int32_t> {
    StopOutcome(const void* handle, uint32_t dmaId) : PlainOutcome<int32_t>{handle}, dma(dmaId) {}

    int32_t scripted(const CallPass& pass) const
    {
        try {
            stopDma(board, dma);
        } catch (const BrdError&) {   // there is nothing to stop
        }
        return PlainOutcome::scripted(pass);
    }

    uint32_t dma;
};

}   // namespace

void* Brd_AllocMemHead(void* board, uint64_t totalSize, int64_t bufferCount)
{
    return exported<void*>(
        "Brd_AllocMemHead", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("totalSize", totalSize)
                .number("bufferCount", bufferCount);
        },
        [&] { return Library::instance().addHead(board, totalSize, bufferCount); },
        PointerOutcome(board, [board](void* head) { return headSymbol(board, head); }));
}

int32_t Brd_AddMem(void* board, void* buffer, uint64_t size, int64_t index, void* memoryHead)
{
    return exported<int32_t>(
        "Brd_AddMem", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .word("buffer", buffer ? "b" + std::to_string(index) : "null");
            words.number("size", size).number("index", index).word("head", headSymbol(board, memoryHead));
        },
        [&] {
            Library::instance().board(board)->head(memoryHead)->add(buffer, size, index);
            return static_cast<int32_t>(index);
        });
}

int32_t Brd_DelMem(void* board, void* memoryHead, int64_t index)
{
    return exported<int32_t>(
        "Brd_DelMem", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .word("head", headSymbol(board, memoryHead))
                .number("index", index);
        },
        [&] {
            Library::instance().board(board)->head(memoryHead)->remove(index);
            return 0;
        });
}

int32_t Brd_FreeMemHead(void* board, void* memoryHead)
{
    return exported<int32_t>(
        "Brd_FreeMemHead", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).word("head", headSymbol(board, memoryHead));
        },
        [&] {
            Library::instance().board(board)->removeHead(memoryHead);
            return 0;
        });
}

int32_t Brd_registerApcHandler(void* board, uint32_t dma, BrdApcControl* control, int32_t zero)
{
    return exported<int32_t>(
        "Brd_registerApcHandler", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("dma", dma)
                .pointer("control", control)
                .number("zero", zero);
        },
        [&] {
            Library::instance().board(board)->dma(dma).setCallback(control);
            return 0;
        });
}

int32_t Brd_AcquireEx(void* board, uint32_t dma, int64_t pictureCount, int32_t mode, void* memoryHead)
{
    return exported<int32_t>(
        "Brd_AcquireEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("dma", dma)
                .number("pictureCount", pictureCount)
                .number("mode", mode);
            words.word("head", headSymbol(board, memoryHead));
        },
        [&] {
            if (mode != kBlockingMode)
                throw BrdError(kUnknownCode, "There is no acquisition mode " + std::to_string(mode));
            if (pictureCount < -1)
                throw BrdError(kOutOfRange, "The picture count is below -1");
            const auto owner = Library::instance().board(board);
            owner->dma(dma).start(owner->head(memoryHead), pictureCount);
            return 0;
        });
}

int32_t Brd_stopAcquireEx(void* board, uint32_t dma, void* memoryHead, int32_t zero)
{
    return exported<int32_t>(
        "Brd_stopAcquireEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("dma", dma)
                .word("head", headSymbol(board, memoryHead))
                .number("zero", zero);
        },
        [&] {
            stopDma(board, dma);
            Library::instance().board(board)->head(memoryHead);   // a wrong one is reported all the same
            return 0;
        },
        StopOutcome(board, dma));
}

int64_t Brd_getImageEx(void* board, int32_t selector, int64_t pictureNumber, uint32_t dma, uint32_t timeout,
                       void* memoryHead)
{
    return exported<int64_t>(
        "Brd_getImageEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("selector", selector)
                .number("pictureNumber", pictureNumber);
            words.number("dma", dma).number("timeout", timeout).word("head", headSymbol(board, memoryHead));
        },
        [&] {
            if (selector != kImageOfPicture)
                throw BrdError(kUnknownCode, "There is no selector " + std::to_string(selector));
            const auto owner = Library::instance().board(board);
            owner->dma(dma);
            if (!owner->head(memoryHead)->find(pictureNumber))
                throw BrdError(kUnknownPicture, "There is no picture " + std::to_string(pictureNumber));
            return imageOfPicture(pictureNumber);
        });
}

void* Brd_getImagePtrEx(void* board, int64_t pictureNumber, uint32_t dma, void* memoryHead)
{
    return exported<void*>(
        "Brd_getImagePtrEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).number("pictureNumber", pictureNumber).number("dma", dma);
            words.word("head", headSymbol(board, memoryHead));
        },
        [&] {
            const auto owner = Library::instance().board(board);
            owner->dma(dma);
            const auto found = owner->head(memoryHead)->find(pictureNumber);
            if (!found)
                throw BrdError(kUnknownPicture, "There is no picture " + std::to_string(pictureNumber));
            return found->address;
        },
        PointerOutcome(board, [=](void* block) { return blockSymbol(board, memoryHead, block); }));
}

int64_t Brd_getStatusEx(void* board, int32_t code, int64_t imageNumber, uint32_t dma, void* memoryHead)
{
    return exported<int64_t>(
        "Brd_getStatusEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("code", code)
                .number("imageNumber", imageNumber)
                .number("dma", dma);
            words.word("head", headSymbol(board, memoryHead));
        },
        [&] {
            const auto owner = Library::instance().board(board);
            const auto head = owner->head(memoryHead);
            switch (code) {
            case kLostPictures:
                return owner->dma(dma).lostPictures();
            case kFreeBlocks:
                return static_cast<int64_t>(head->freeCount());
            default:
                throw BrdError(kUnknownCode, "There is no status " + std::to_string(code));
            }
        });
}

int32_t Brd_setStatusEx(void* board, int32_t code, int64_t imageNumber, uint32_t dma, void* memoryHead)
{
    return exported<int32_t>(
        "Brd_setStatusEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("code", code)
                .number("imageNumber", imageNumber)
                .number("dma", dma);
            words.word("head", headSymbol(board, memoryHead));
        },
        [&] {
            if (code != kGiveBack)
                throw BrdError(kUnknownCode, "There is no status " + std::to_string(code) + " to be set");
            const auto owner = Library::instance().board(board);
            // Blocks are counted from 1 in this call alone.
            owner->dma(dma).giveBack(*owner->head(memoryHead), imageNumber - 1);
            return 0;
        });
}

#include <string>

#include "sim/brdlib5/BoardCall.h"
#include "sim/brdlib5/Library.h"
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
struct StopAnyway : NothingOut {
    StopAnyway(const void* handle, uint32_t dmaId) : board(handle), dma(dmaId) {}

    void take(const CallPass&) const
    {
        try {
            stopDma(board, dma);
        } catch (const BrdError&) {   // there is nothing to stop
        }
    }

    const void* board;
    uint32_t dma;
};

/// The block that holds a picture. Throws BrdError, also for a DMA that the board doesn't have.
MemoryHead::Found blockOf(const void* board, uint32_t dma, const void* memoryHead, int64_t pictureNumber)
{
    const auto owner = Library::instance().board(board);
    owner->dma(dma);
    const auto found = owner->head(memoryHead)->find(pictureNumber);
    if (!found)
        throw BrdError(kUnknownPicture, "There is no picture " + std::to_string(pictureNumber));
    return *found;
}

}   // namespace

void* Brd_AllocMemHead(void* board, uint64_t totalSize, int64_t bufferCount)
{
    return boardCall(__func__, board, named("totalSize", totalSize), named("bufferCount", bufferCount))
        .run([&] { return Library::instance().addHead(board, totalSize, bufferCount); },
             AddressOut([board](const void* head) { return headSymbol(board, head); }));
}

int32_t Brd_AddMem(void* board, void* buffer, uint64_t size, int64_t index, void* memoryHead)
{
    const auto block = [=] { return buffer ? "b" + std::to_string(index) : CallText::kNull; };
    return boardCall(__func__, board, symbol("buffer", block), named("size", size), named("index", index),
                     headArgument(board, memoryHead))
        .run([&] {
            Library::instance().board(board)->head(memoryHead)->add(buffer, size, index);
            return static_cast<int32_t>(index);
        });
}

int32_t Brd_DelMem(void* board, void* memoryHead, int64_t index)
{
    return boardCall(__func__, board, headArgument(board, memoryHead), named("index", index)).run([&] {
        Library::instance().board(board)->head(memoryHead)->remove(index);
    });
}

int32_t Brd_FreeMemHead(void* board, void* memoryHead)
{
    return boardCall(__func__, board, headArgument(board, memoryHead)).run([&] {
        Library::instance().board(board)->removeHead(memoryHead);
    });
}

int32_t Brd_registerApcHandler(void* board, uint32_t dma, BrdApcControl* control, int32_t zero)
{
    return boardCall(__func__, board, named("dma", dma), setOrNull("control", control), named("zero", zero))
        .run([&] { Library::instance().board(board)->dma(dma).setCallback(control); });
}

int32_t Brd_AcquireEx(void* board, uint32_t dma, int64_t pictureCount, int32_t mode, void* memoryHead)
{
    return boardCall(__func__, board, named("dma", dma), named("pictureCount", pictureCount),
                     named("mode", mode), headArgument(board, memoryHead))
        .run([&] {
            if (mode != kBlockingMode)
                throw BrdError(kUnknownCode, "There is no acquisition mode " + std::to_string(mode));
            if (pictureCount < -1)
                throw BrdError(kOutOfRange, "The picture count is below -1");
            const auto owner = Library::instance().board(board);
            owner->dma(dma).start(owner->head(memoryHead), pictureCount);
        });
}

int32_t Brd_stopAcquireEx(void* board, uint32_t dma, void* memoryHead, int32_t zero)
{
    const auto body = [&] {
        stopDma(board, dma);
        Library::instance().board(board)->head(memoryHead);   // a wrong one is reported all the same
    };
    return boardCall(__func__, board, named("dma", dma), headArgument(board, memoryHead), named("zero", zero))
        .run(body, StopAnyway(board, dma));
}

int64_t Brd_getImageEx(void* board, int32_t selector, int64_t pictureNumber, uint32_t dma, uint32_t timeout,
                       void* memoryHead)
{
    return boardCall(__func__, board, named("selector", selector), named("pictureNumber", pictureNumber),
                     named("dma", dma), named("timeout", timeout), headArgument(board, memoryHead))
        .run([&] {
            if (selector != kImageOfPicture)
                throw BrdError(kUnknownCode, "There is no selector " + std::to_string(selector));
            blockOf(board, dma, memoryHead, pictureNumber);
            return imageOfPicture(pictureNumber);
        });
}

void* Brd_getImagePtrEx(void* board, int64_t pictureNumber, uint32_t dma, void* memoryHead)
{
    return boardCall(__func__, board, named("pictureNumber", pictureNumber), named("dma", dma),
                     headArgument(board, memoryHead))
        .run([&] { return blockOf(board, dma, memoryHead, pictureNumber).address; },
             AddressOut([=](const void* block) { return blockSymbol(board, memoryHead, block); }));
}

int64_t Brd_getStatusEx(void* board, int32_t code, int64_t imageNumber, uint32_t dma, void* memoryHead)
{
    return boardCall(__func__, board, named("code", code), named("imageNumber", imageNumber),
                     named("dma", dma), headArgument(board, memoryHead))
        .run([&] {
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
    return boardCall(__func__, board, named("code", code), named("imageNumber", imageNumber),
                     named("dma", dma), headArgument(board, memoryHead))
        .run([&] {
            if (code != kGiveBack)
                throw BrdError(kUnknownCode, "There is no status " + std::to_string(code) + " to be set");
            const auto owner = Library::instance().board(board);
            // Blocks are counted from 1 in this call alone.
            owner->dma(dma).giveBack(*owner->head(memoryHead), imageNumber - 1);
        });
}

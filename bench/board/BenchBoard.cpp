// A board library that does next to nothing, so that a bench measures the adapter. It has one board with one
// applet process. It checks nothing that a correct caller gets right.

#include "bench/board/BenchBoard.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <memory>
#include <string_view>

#include "brdlib/binding/BrdFunctions.h"

using orvo::bench::kMostDmas;
using orvo::cognex::BrdApcControl;

namespace {

constexpr int32_t kNoBoard = -1;
constexpr int32_t kRefused = -1;
constexpr int32_t kBoardType = 2897;
constexpr int32_t kParameterWidth = 100;
constexpr int32_t kParameterHeight = 200;
constexpr int32_t kParameterFormat = 700;
constexpr int32_t kParameterDmaCount = 3050;
constexpr int32_t kParameterProcessCount = 3070;
constexpr int32_t kParameterDmaId = 3080;
constexpr int32_t kInformationTimestampFrequency = 100;
constexpr int32_t kStatusUnblock = 512;
constexpr uint32_t kFormatOfThreeBytes = 2;
constexpr size_t kMostBlocks = 64;

struct Block {
    void* address = nullptr;
    std::atomic<bool> isFree{true};   // the host's thread gives back what the delivering thread fills
};

struct MemoryHead {
    std::array<Block, kMostBlocks> blocks;
    size_t count = 0;
    size_t next = 0;   // in ring order
};

struct Dma {
    uint32_t width = 64;
    uint32_t height = 64;
    BrdApcControl control{};
    MemoryHead* head = nullptr;   // null while the DMA is stopped
    int64_t picture = 0;          // the number of the latest one
    void* address = nullptr;      // of its block
};

uint32_t g_dmaCount = 1;
std::array<Dma, kMostDmas> g_dmas;

uint32_t valueOf(int32_t id, uint32_t dma)
{
    switch (id) {
    case kParameterWidth:
        return g_dmas[dma].width;
    case kParameterHeight:
        return g_dmas[dma].height;
    case kParameterFormat:
        return kFormatOfThreeBytes;
    case kParameterDmaCount:
        return g_dmaCount;
    case kParameterProcessCount:
        return 1;
    default:
        return 0;
    }
}

int32_t handOut(std::string_view text, void* buffer)
{
    text.copy(static_cast<char*>(buffer), text.size());
    static_cast<char*>(buffer)[text.size()] = '\0';
    return 0;
}

}   // namespace

extern "C" {

#define ORVO_DECLARE(how, Result, ifMissing, name, parameters, arguments) Result name parameters;
ORVO_BRD_FUNCTIONS(ORVO_DECLARE)
#undef ORVO_DECLARE
void BenchBoard_setDmaCount(uint32_t count);
int32_t BenchBoard_deliver(uint32_t index, uint64_t word);

void BenchBoard_setDmaCount(uint32_t count)
{
    g_dmaCount = std::clamp(count, 1U, kMostDmas);
}

int32_t BenchBoard_deliver(uint32_t index, uint64_t word)
{
    Dma& dma = g_dmas[index];
    MemoryHead* const head = dma.head;
    if (!head)
        return 0;
    Block& block = head->blocks[head->next];
    if (!block.isFree.load(std::memory_order_acquire))
        return 0;
    block.isFree.store(false, std::memory_order_relaxed);
    head->next = (head->next + 1) % head->count;
    std::memcpy(block.address, &word, sizeof word);
    dma.address = block.address;
    dma.control.func(++dma.picture, dma.control.data);
    return 1;
}

int32_t Brd_InitLibraries(const char* /*directory*/)
{
    return 0;
}

void Brd_FreeLibraries() {}

int32_t Brd_getBoardType(int32_t boardIndex)
{
    return boardIndex == 0 ? kBoardType : kNoBoard;
}

const char* Brd_getBoardNameByType(int32_t /*type*/, int32_t /*one*/)
{
    return "Bench";
}

int32_t Brd_getSystemInformation(void* /*board*/, int32_t code, int32_t /*property*/, int32_t /*boardIndex*/,
                                 void* buffer, uint32_t* /*length*/)
{
    return handOut(code == kInformationTimestampFrequency ? "1000000" : "Bench", buffer);
}

void* Brd_InitEx(const char* /*path*/, uint32_t /*boardIndex*/, int32_t /*flags*/)
{
    return &g_dmas;
}

int32_t Brd_FreeGrabber(void* /*board*/)
{
    return 0;
}

int32_t Brd_getLastErrorNumber(void* /*board*/)
{
    return kRefused;
}

int32_t Brd_getParameterIdByName(void* /*board*/, const char* /*name*/)
{
    return kParameterWidth;
}

int32_t Brd_getParameter(void* /*board*/, int32_t id, void* value, uint32_t dma)
{
    if (id == kParameterDmaId)
        return 0;   // the caller's word holds the position, which is the id
    const uint32_t number = valueOf(id, dma);
    std::memcpy(value, &number, sizeof number);
    return 0;
}

int32_t Brd_setParameter(void* /*board*/, int32_t id, const void* value, uint32_t dma)
{
    uint32_t number = 0;
    std::memcpy(&number, value, sizeof number);
    if (id == kParameterWidth)
        g_dmas[dma].width = number;
    if (id == kParameterHeight)
        g_dmas[dma].height = number;
    return 0;
}

int32_t Brd_getParameterWithType(void* board, int32_t id, void* value, uint32_t dma, int32_t /*type*/)
{
    return Brd_getParameter(board, id, value, dma);
}

int32_t Brd_setParameterWithType(void* board, int32_t id, const void* value, uint32_t dma, int32_t /*type*/)
{
    return Brd_setParameter(board, id, value, dma);
}

int32_t Brd_getParameterEx(void* /*board*/, int32_t /*id*/, void* value, uint32_t /*dma*/,
                           void* /*memoryHead*/, int64_t imageNumber)
{
    std::memcpy(value, &imageNumber, sizeof imageNumber);
    return 0;
}

int32_t Brd_getParameterProperty(void* /*board*/, int32_t /*id*/, int32_t /*property*/, void* buffer,
                                 int32_t* /*length*/)
{
    return handOut("2", buffer);   // the type of all parameters: 32 bits, unsigned
}

int32_t Brd_getParameterPropertyEx(void* /*board*/, int32_t /*id*/, int32_t /*property*/, uint32_t /*dma*/,
                                   void* buffer, int32_t* /*length*/)
{
    return handOut("64", buffer);
}

void* Brd_AllocMemHead(void* /*board*/, uint64_t /*totalSize*/, int64_t bufferCount)
{
    if (bufferCount < 1 || bufferCount > static_cast<int64_t>(kMostBlocks))
        return nullptr;
    auto head = std::make_unique<MemoryHead>();
    head->count = static_cast<size_t>(bufferCount);
    return head.release();
}

int32_t Brd_AddMem(void* /*board*/, void* buffer, uint64_t size, int64_t index, void* memoryHead)
{
    if (size < sizeof(uint64_t))
        return kRefused;
    static_cast<MemoryHead*>(memoryHead)->blocks[static_cast<size_t>(index)].address = buffer;
    return 0;
}

int32_t Brd_DelMem(void* /*board*/, void* /*memoryHead*/, int64_t /*index*/)
{
    return 0;
}

int32_t Brd_FreeMemHead(void* /*board*/, void* memoryHead)
{
    const std::unique_ptr<MemoryHead> freed(static_cast<MemoryHead*>(memoryHead));
    return 0;
}

int32_t Brd_registerApcHandler(void* /*board*/, uint32_t dma, BrdApcControl* control, int32_t /*zero*/)
{
    g_dmas[dma].control = control ? *control : BrdApcControl{};
    return 0;
}

int32_t Brd_AcquireEx(void* /*board*/, uint32_t dma, int64_t /*pictureCount*/, int32_t /*mode*/,
                      void* memoryHead)
{
    g_dmas[dma].picture = 0;
    g_dmas[dma].head = static_cast<MemoryHead*>(memoryHead);
    return 0;
}

int32_t Brd_stopAcquireEx(void* /*board*/, uint32_t dma, void* /*memoryHead*/, int32_t /*zero*/)
{
    g_dmas[dma].head = nullptr;
    return 0;
}

int64_t Brd_getImageEx(void* /*board*/, int32_t /*selector*/, int64_t pictureNumber, uint32_t /*dma*/,
                       uint32_t /*timeout*/, void* /*memoryHead*/)
{
    return pictureNumber;
}

void* Brd_getImagePtrEx(void* /*board*/, int64_t /*pictureNumber*/, uint32_t dma, void* /*memoryHead*/)
{
    return g_dmas[dma].address;   // asked inside the callback alone, about its own picture
}

int64_t Brd_getStatusEx(void* /*board*/, int32_t /*code*/, int64_t /*imageNumber*/, uint32_t /*dma*/,
                        void* /*memoryHead*/)
{
    return 0;
}

int32_t Brd_setStatusEx(void* /*board*/, int32_t code, int64_t imageNumber, uint32_t /*dma*/,
                        void* memoryHead)
{
    if (code == kStatusUnblock)
        static_cast<MemoryHead*>(memoryHead)
            ->blocks[static_cast<size_t>(imageNumber - 1)]
            .isFree.store(true, std::memory_order_release);
    return 0;
}

}   // extern "C"

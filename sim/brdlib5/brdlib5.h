#pragma once

#include <cstdint>

/// The binary interface of the board library, as its callers load it. A status is 0 on success and negative
/// on failure unless the function says otherwise; BrdError.h has the codes. Any thread may call anything at
/// any time, also inside an image callback; Brd_InitLibraries and Brd_FreeLibraries are left to one thread.
extern "C" {

/// What an image callback is registered with. It is copied.
struct BrdApcControl {
    uint32_t version;   // 0
    int32_t (*func)(int64_t pictureNumber, void* data);
    void* data;   // handed to func as it is
    uint32_t timeout;
    uint32_t flags;
};

// Begin and end. Calls nest; the directory isn't used.
int32_t Brd_InitLibraries(const char* directory);
void Brd_FreeLibraries();

// Boards. Board indices run from 0 to 7; a negative type says that there is none. Texts that are returned
// stay until the thread asks for the next.
int32_t Brd_getBoardType(int32_t boardIndex);
const char* Brd_getBoardNameByType(int32_t type, int32_t one);
int32_t Brd_getSystemInformation(void* board, int32_t code, int32_t property, int32_t boardIndex,
                                 void* buffer, uint32_t* length);
void* Brd_InitEx(const char* path, uint32_t boardIndex, int32_t flags);
void* Brd_InitConfigEx(const char* path, uint32_t boardIndex, int32_t flags);
int32_t Brd_FreeGrabber(void* board);
int32_t Brd_getLastErrorNumber(void* board);
const char* Brd_getLastErrorDescription(void* board);

// Parameters. For ids 3050, 3060, 3080 and 3090 `dma` is the process index. An id by name is negative on
// failure.
int32_t Brd_getParameterIdByName(void* board, const char* name);
int32_t Brd_getParameter(void* board, int32_t id, void* value, uint32_t dma);
int32_t Brd_setParameter(void* board, int32_t id, const void* value, uint32_t dma);
int32_t Brd_getParameterWithType(void* board, int32_t id, void* value, uint32_t dma, int32_t type);
int32_t Brd_setParameterWithType(void* board, int32_t id, const void* value, uint32_t dma, int32_t type);
int32_t Brd_getParameterEx(void* board, int32_t id, void* value, uint32_t dma, void* memoryHead,
                           int64_t imageNumber);
int32_t Brd_getParameterProperty(void* board, int32_t id, int32_t property, void* buffer, int32_t* length);
int32_t Brd_getParameterPropertyEx(void* board, int32_t id, int32_t property, uint32_t dma, void* buffer,
                                   int32_t* length);

// The ring: blocks that the caller owns, counted from 0. Brd_AddMem returns the block's index.
void* Brd_AllocMemHead(void* board, uint64_t totalSize, int64_t bufferCount);
int32_t Brd_AddMem(void* board, void* buffer, uint64_t size, int64_t index, void* memoryHead);
int32_t Brd_DelMem(void* board, void* memoryHead, int64_t index);
int32_t Brd_FreeMemHead(void* board, void* memoryHead);

// Acquisition. Pictures are counted from 1. Answers of 64 bits are negative on failure.
int32_t Brd_registerApcHandler(void* board, uint32_t dma, BrdApcControl* control, int32_t zero);
int32_t Brd_AcquireEx(void* board, uint32_t dma, int64_t pictureCount, int32_t mode, void* memoryHead);
int32_t Brd_stopAcquireEx(void* board, uint32_t dma, void* memoryHead, int32_t zero);
int64_t Brd_getImageEx(void* board, int32_t selector, int64_t pictureNumber, uint32_t dma, uint32_t timeout,
                       void* memoryHead);
void* Brd_getImagePtrEx(void* board, int64_t pictureNumber, uint32_t dma, void* memoryHead);
int64_t Brd_getStatusEx(void* board, int32_t code, int64_t imageNumber, uint32_t dma, void* memoryHead);
int32_t Brd_setStatusEx(void* board, int32_t code, int64_t imageNumber, uint32_t dma, void* memoryHead);
}

#pragma once

#include <cstddef>
#include <cstdint>

namespace orvo::cognex {

/// What the board library is told of the image callback. It copies the record while it registers it.
struct BrdApcControl {
    int32_t version;
    int32_t (*func)(int64_t pictureNumber, void* data);
    void* data;
    int32_t timeout;
    int32_t flags;
};
static_assert(offsetof(BrdApcControl, func) == 8);
static_assert(offsetof(BrdApcControl, data) == 16);
static_assert(offsetof(BrdApcControl, timeout) == 24);
static_assert(offsetof(BrdApcControl, flags) == 28);
static_assert(sizeof(BrdApcControl) == 32);

inline constexpr int32_t kFunctionNotReached = -2130;   // the board library's own code for it
inline constexpr int32_t kParameterNotInApplet = -2070;
inline constexpr int32_t kTypeOfCounts = 1;   // the type code by which counts are read

/// A count as a library gives it, or none where it can't be true, so that no loop runs to billions.
constexpr uint32_t plausibleCount(uint32_t count)
{
    return count <= 65'535 ? count : 0;
}

// The functions of the board library that the adapter calls. Each row makes a forwarder of the same name that
// loads and binds the library at the first call of any.
//    Guarded  answers `if missing` where the library lacks the function
//    Direct   jumps all the same: a library without it takes the process down
//    Opening  Guarded, and its argument says where to look for the library; null means the installation
#define ORVO_BRD_FUNCTIONS(X)                                                                                \
    /* how     result       if missing           name */                                                     \
    /*         parameters, arguments            */                                                           \
    X(Opening, int32_t, kFunctionNotReached, Brd_InitLibraries, (const char* directory), (directory))        \
    X(Guarded, void, , Brd_FreeLibraries, (), ())                                                            \
    X(Direct, int32_t, , Brd_getBoardType, (int32_t boardIndex), (boardIndex))                               \
    X(Direct, const char*, , Brd_getBoardNameByType, (int32_t type, int32_t one), (type, one))               \
    X(Direct, int32_t, , Brd_getSystemInformation,                                                           \
      (void* board, int32_t code, int32_t property, int32_t boardIndex, void* buffer, uint32_t* length),     \
      (board, code, property, boardIndex, buffer, length))                                                   \
    X(Direct, void*, , Brd_InitEx, (const char* path, uint32_t boardIndex, int32_t flags),                   \
      (path, boardIndex, flags))                                                                             \
    X(Guarded, void*, nullptr, Brd_InitConfigEx, (const char* path, uint32_t boardIndex, int32_t flags),     \
      (path, boardIndex, flags))                                                                             \
    X(Direct, int32_t, , Brd_FreeGrabber, (void* board), (board))                                            \
    X(Direct, int32_t, , Brd_getLastErrorNumber, (void* board), (board))                                     \
    X(Direct, const char*, , Brd_getLastErrorDescription, (void* board), (board))                            \
    X(Direct, int32_t, , Brd_getParameterIdByName, (void* board, const char* name), (board, name))           \
    X(Direct, int32_t, , Brd_getParameter, (void* board, int32_t id, void* value, uint32_t dma),             \
      (board, id, value, dma))                                                                               \
    X(Direct, int32_t, , Brd_setParameter, (void* board, int32_t id, const void* value, uint32_t dma),       \
      (board, id, value, dma))                                                                               \
    X(Direct, int32_t, , Brd_getParameterWithType,                                                           \
      (void* board, int32_t id, void* value, uint32_t dma, int32_t type), (board, id, value, dma, type))     \
    X(Direct, int32_t, , Brd_setParameterWithType,                                                           \
      (void* board, int32_t id, const void* value, uint32_t dma, int32_t type),                              \
      (board, id, value, dma, type))                                                                         \
    X(Direct, int32_t, , Brd_getParameterEx,                                                                 \
      (void* board, int32_t id, void* value, uint32_t dma, void* memoryHead, int64_t imageNumber),           \
      (board, id, value, dma, memoryHead, imageNumber))                                                      \
    X(Direct, int32_t, , Brd_getParameterProperty,                                                           \
      (void* board, int32_t id, int32_t property, void* buffer, int32_t* length),                            \
      (board, id, property, buffer, length))                                                                 \
    X(Guarded, int32_t, kFunctionNotReached, Brd_getParameterPropertyEx,                                     \
      (void* board, int32_t id, int32_t property, uint32_t dma, void* buffer, int32_t* length),              \
      (board, id, property, dma, buffer, length))                                                            \
    X(Direct, void*, , Brd_AllocMemHead, (void* board, uint64_t totalSize, int64_t bufferCount),             \
      (board, totalSize, bufferCount))                                                                       \
    X(Direct, int32_t, , Brd_AddMem,                                                                         \
      (void* board, void* buffer, uint64_t size, int64_t index, void* memoryHead),                           \
      (board, buffer, size, index, memoryHead))                                                              \
    X(Direct, int32_t, , Brd_DelMem, (void* board, void* memoryHead, int64_t index),                         \
      (board, memoryHead, index))                                                                            \
    X(Direct, int32_t, , Brd_FreeMemHead, (void* board, void* memoryHead), (board, memoryHead))              \
    X(Direct, int32_t, , Brd_registerApcHandler,                                                             \
      (void* board, uint32_t dma, BrdApcControl* control, int32_t zero), (board, dma, control, zero))        \
    X(Direct, int32_t, , Brd_AcquireEx,                                                                      \
      (void* board, uint32_t dma, int64_t pictureCount, int32_t mode, void* memoryHead),                     \
      (board, dma, pictureCount, mode, memoryHead))                                                          \
    X(Direct, int32_t, , Brd_stopAcquireEx, (void* board, uint32_t dma, void* memoryHead, int32_t zero),     \
      (board, dma, memoryHead, zero))                                                                        \
    X(Direct, int64_t, , Brd_getImageEx,                                                                     \
      (void* board, int32_t selector, int64_t pictureNumber, uint32_t dma, uint32_t timeout,                 \
       void* memoryHead),                                                                                    \
      (board, selector, pictureNumber, dma, timeout, memoryHead))                                            \
    X(Direct, void*, , Brd_getImagePtrEx,                                                                    \
      (void* board, int64_t pictureNumber, uint32_t dma, void* memoryHead),                                  \
      (board, pictureNumber, dma, memoryHead))                                                               \
    X(Direct, int64_t, , Brd_getStatusEx,                                                                    \
      (void* board, int32_t code, int64_t imageNumber, uint32_t dma, void* memoryHead),                      \
      (board, code, imageNumber, dma, memoryHead))                                                           \
    X(Direct, int32_t, , Brd_setStatusEx,                                                                    \
      (void* board, int32_t code, int64_t imageNumber, uint32_t dma, void* memoryHead),                      \
      (board, code, imageNumber, dma, memoryHead))

#define ORVO_DECLARE(how, Result, ifMissing, name, parameters, arguments) Result name parameters;
ORVO_BRD_FUNCTIONS(ORVO_DECLARE)
#undef ORVO_DECLARE

/// Loads the board library from `directory`, or from the installation for null, and binds all its names. A
/// name that it lacks is bound to null. Answers 0, or kFunctionNotReached if the library can't be loaded.
int32_t loadBoardLibrary(const char* directory);

}   // namespace orvo::cognex

#include "brdlib/binding/BrdFunctions.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "AIKException.h"
#include "brdlib/binding/SharedLibrary.h"

namespace orvo::cognex {

namespace {

// In the order of binding. "Brd_findApplet" is listed twice, and one name ends in a tab: both are deliberate, the
// board library is asked for exactly these. No library has the name with the tab, and nothing calls it.
constexpr std::array kNames = {
    "Brd_InitLibraries",
    "Brd_InitLibrariesEx",
    "Brd_InitLibrariesStartNextSlave",
    "Brd_AbortInitLibraries",
    "Brd_FreeLibraries",
    "Brd_Init",
    "Brd_InitConfig",
    "Brd_InitConfigEx",
    "Brd_InitEx",
    "Brd_InitTrampoline",
    "Brd_FreeGrabber",
    "Brd_AllocMem",
    "Brd_AllocMemEx",
    "Brd_FreeMem",
    "Brd_FreeMemEx",
    "Brd_AllocMemHead",
    "Brd_FreeMemHead",
    "Brd_AddMem",
    "Brd_DelMem",
    "Brd_NumaAllocDmaBuffer",
    "Brd_NumaFreeDmaBuffer",
    "Brd_NumaPinThread",
    "Brd_getNrOfParameter",
    "Brd_getParameterId",
    "Brd_getParameterIdByName",
    "Brd_getParameterNameById",
    "Brd_getParameterName",
    "Brd_setParameter",
    "Brd_setParameterWithType",
    "Brd_getParameter",
    "Brd_getParameterWithType",
    "Brd_freeParameterStringWithType",
    "Brd_getParameterEx",
    "Brd_getParameterInfoXML",
    "Brd_findApplet",
    "Brd_saveConfig",
    "Brd_saveFieldParameterToFile",
    "Brd_loadConfig",
    "Brd_loadFieldParameterFromFile",
    "Brd_Acquire",
    "Brd_stopAcquire",
    "Brd_getLastPicNumberBlocking",
    "Brd_getLastPicNumber",
    "Brd_getLastPicNumberBlockingEx",
    "Brd_getLastPicNumberEx",
    "Brd_getImagePtr",
    "Brd_getImagePtrEx",
    "Brd_AcquireEx",
    "Brd_sendImage",
    "Brd_sendImageEx",
    "Brd_stopAcquireEx",
    "Brd_getImage",
    "Brd_getImageEx",
    "Brd_registerApcHandler",
    "Brd_getLastErrorNumber",
    "getErrorDescription",
    "Brd_getLastErrorDescription",
    "Brd_getErrorDescription",
    "Brd_getBoardType",
    "Brd_getBoardNameByType",
    "Brd_getSerialNumber",
    "Brd_getSWVersion",
    "Brd_getAppletId",
    "Brd_getParameterProperty",
    "Brd_getParameterPropertyEx",
    "Brd_getSystemInformation",
    "Brd_readUserDataArea",
    "Brd_writeUserDataArea",
    "Brd_getStatus",
    "Brd_getStatusEx",
    "Brd_setStatus\t",
    "Brd_setStatusEx",
    "Brd_getEventMask",
    "Brd_getEventPayload",
    "Brd_getEventName",
    "Brd_getEventCount",
    "Brd_activateEvents",
    "Brd_clearEvents",
    "Brd_eventWait",
    "Brd_registerEventCallback",
    "Brd_registerAsyncNotifyCallback",
    "Brd_unregisterAsyncNotifyCallback",
    "Brd_setExsync",
    "Brd_setFlash",
    "Brd_sendSoftwareTrigger",
    "Brd_sendSoftwareTriggerEx",
    "Brd_AllocShading",
    "Brd_FreeShading",
    "Shad_GetAccess",
    "Shad_FreeAccess",
    "Shad_GetMaxLine",
    "Shad_SetSubValueLine",
    "Shad_SetMultValueLine",
    "Shad_SetFixedPatternNoiseLine",
    "Shad_WriteActLine",
    "Brd_InitHandle",
    "Brd_InitHandleSlaveAware",
    "Brd_getParameterInfo",
    "getLastErrorNumber",
    "Brd_findApplet",
    "Brd_getAppletIterator",
    "Brd_getAppletIteratorItem",
    "Brd_findAppletIteratorItem",
    "Brd_addAppletIteratorItem",
    "Brd_freeAppletIterator",
    "Brd_getAppletIntProperty",
    "Brd_getAppletStringProperty",
};
static_assert(kNames.size() == 107);

std::array<os::Symbol, kNames.size()> g_functions{};

constexpr size_t slotOf(std::string_view name)
{
    return static_cast<size_t>(std::find(kNames.begin(), kNames.end(), name) - kNames.begin());
}

void bindFrom(const char* directory)
{
    // The mark of a bound library: one without this name is tried again at every call.
    constexpr size_t kMark = slotOf("Brd_InitEx");
    if (!g_functions[kMark])
        loadBoardLibrary(directory);
}

template <typename Function>
Function* functionAt(size_t slot, const char* directory)
{
    bindFrom(directory);
    return reinterpret_cast<Function*>(g_functions[slot]);
}

}   // namespace

int32_t loadBoardLibrary(const char* directory)
{
    const auto library = openLibrary("brdlib5", directory);
    if (!library)
        return kFunctionNotReached;
    std::transform(kNames.begin(), kNames.end(), g_functions.begin(),
                   [&](const char* name) { return library->symbol(name); });
    return 0;
}

#define ORVO_CHECK_Direct(ifMissing)
#define ORVO_CHECK_Guarded(ifMissing)                                                                        \
    if (!function)                                                                                           \
        return ifMissing;
#define ORVO_CHECK_Opening(ifMissing) ORVO_CHECK_Guarded(ifMissing)
#define ORVO_DIRECTORY_Direct nullptr
#define ORVO_DIRECTORY_Guarded nullptr
#define ORVO_DIRECTORY_Opening directory
#define ORVO_FORWARD(how, Result, ifMissing, name, parameters, arguments)                                    \
    Result name parameters                                                                                   \
    {                                                                                                        \
        constexpr size_t kSlot = slotOf(#name);                                                              \
        static_assert(kSlot < kNames.size());                                                                \
        const auto function = functionAt<Result parameters>(kSlot, ORVO_DIRECTORY_##how);                    \
        ORVO_CHECK_##how(ifMissing) return function arguments;                                               \
    }
ORVO_BRD_FUNCTIONS(ORVO_FORWARD)

void throwBrdError(int64_t number)
{
    throw AIKException("brd error code: " + std::to_string(number));
}

}   // namespace orvo::cognex

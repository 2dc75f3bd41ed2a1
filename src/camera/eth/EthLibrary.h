#pragma once

#include <cstdint>
#include <string>

#include "camera/CameraLibrary.h"

namespace orvo::cognex {

// The GigE Vision camera library: the functions that the adapter calls, bound by ordinal when the adapter is
// loaded. Handles of the library and of its cameras are numbers, 0 for none; a result is 0 for success unless
// it says otherwise. A camera's handle ends with a successful disconnect, with its release, or with the library.
extern "C" {

int32_t Eth_openBoard(int32_t boardIndex, int32_t zero, uint64_t* library);
int32_t Eth_closeBoard(uint64_t library);
int32_t Eth_scanPorts(uint64_t library, uint32_t mask, uint32_t bound);
/// A count, or a negative error.
int32_t Eth_getCameraCount(uint64_t library, uint32_t port);
/// A record of the library, valid until the next call with that camera, or null.
const void* Eth_getCameraInfo(uint64_t camera);
int32_t Eth_releaseCamera(uint64_t camera);
int32_t Eth_connectCamera(uint64_t camera);
int32_t Eth_disconnectCamera(uint64_t camera);
int32_t Eth_setIntegerValue(uint64_t camera, const char* name, int64_t value);
int32_t Eth_getIntegerValue(uint64_t camera, const char* name, int64_t* value);
int32_t Eth_setBooleanValue(uint64_t camera, const char* name, int32_t value);
int32_t Eth_getBooleanValue(uint64_t camera, const char* name, int32_t* value);
int32_t Eth_setFloatValue(uint64_t camera, const char* name, double value);
int32_t Eth_getFloatValue(uint64_t camera, const char* name, double* value);
int32_t Eth_setStringValue(uint64_t camera, const char* name, const char* text);
int32_t Eth_getStringValue(uint64_t camera, const char* name, char** text);
int32_t Eth_setEnumerationValue(uint64_t camera, const char* name, const char* text);
int32_t Eth_getEnumerationValue(uint64_t camera, const char* name, char** text);
int32_t Eth_executeCommand(uint64_t camera, const char* name);
int32_t Eth_startAcquisition(uint64_t camera);
int32_t Eth_stopAcquisition(uint64_t camera);
/// Null for a code without words.
const char* Eth_getErrorDescription(int32_t code);
int32_t Eth_setCameraRegister(uint64_t camera, const char* name, const uint32_t* value, uint32_t one);
/// Hands out a new handle at each call.
int32_t Eth_getCameraByIndex(uint64_t library, uint32_t port, uint32_t index, uint64_t* camera);
int32_t Eth_sendActionCommand(uint64_t library, uint32_t port, uint32_t all, uint32_t deviceKey,
                              uint32_t groupKey, uint32_t groupMask);

}   // extern "C"

inline constexpr CameraLibrary kEthLibrary{
    .errorPrefix = "eth error code: ",
    .closeBoard = Eth_closeBoard,
    .setInteger = Eth_setIntegerValue,
    .getInteger = Eth_getIntegerValue,
    .setBoolean = Eth_setBooleanValue,
    .getBoolean = Eth_getBooleanValue,
    .setFloat = Eth_setFloatValue,
    .getFloat = Eth_getFloatValue,
    .setString = Eth_setStringValue,
    .getString = Eth_getStringValue,
    .setEnumeration = Eth_setEnumerationValue,
    .getEnumeration = Eth_getEnumerationValue,
    .executeCommand = Eth_executeCommand,
};

/// The library's own words for the number of a failure, empty if it has none.
inline std::string ethErrorText(int32_t code)
{
    const char* const text = Eth_getErrorDescription(code);
    return text ? text : "";
}

}   // namespace orvo::cognex

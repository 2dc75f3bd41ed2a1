#pragma once

#include <cstddef>
#include <cstdint>

#include "camera/CameraLibrary.h"

namespace orvo::cognex {

/// The library's record of a camera, as far as it is read here.
struct OgcCameraInfo {
    const void* first;   // null in a record that means nothing
    const char* name;
};
static_assert(offsetof(OgcCameraInfo, name) == 8);

// The GenICam access library: the functions that the adapter calls, bound by ordinal when the adapter is
// loaded. Handles of the library and of its cameras are numbers, 0 for none; a result is 0 for success unless
// it says otherwise. A camera's handle ends with the library.
extern "C" {

/// `applet` is the board library's handle of a loaded applet.
int32_t Ogc_openBoard(uint64_t applet, int32_t zero, uint64_t* library);
int32_t Ogc_closeBoard(uint64_t library);
int32_t Ogc_scanPorts(uint64_t library, uint32_t mask, uint32_t bound, uint32_t zero);
/// A record of the library (OgcCameraInfo), valid until the next call with that camera, or null.
const void* Ogc_getCameraInfo(uint64_t camera);
int32_t Ogc_connectCamera(uint64_t camera);
/// A count, and never an error.
int32_t Ogc_getFoundCount(uint64_t library);
/// Hands out a new handle at each call.
int32_t Ogc_getCameraOnPort(uint64_t library, uint32_t port, uint64_t* camera);
int32_t Ogc_setIntegerValue(uint64_t camera, const char* name, int64_t value);
int32_t Ogc_getIntegerValue(uint64_t camera, const char* name, int64_t* value);
int32_t Ogc_setBooleanValue(uint64_t camera, const char* name, int32_t value);
int32_t Ogc_getBooleanValue(uint64_t camera, const char* name, int32_t* value);
int32_t Ogc_setFloatValue(uint64_t camera, const char* name, double value);
int32_t Ogc_getFloatValue(uint64_t camera, const char* name, double* value);
int32_t Ogc_setStringValue(uint64_t camera, const char* name, const char* text);
int32_t Ogc_getStringValue(uint64_t camera, const char* name, char** text);
int32_t Ogc_setEnumerationValue(uint64_t camera, const char* name, const char* text);
int32_t Ogc_getEnumerationValue(uint64_t camera, const char* name, char** text);
int32_t Ogc_executeCommand(uint64_t camera, const char* name);

}   // extern "C"

inline constexpr CameraLibrary kOgcLibrary{
    .errorPrefix = "ogc error code: ",
    .closeBoard = Ogc_closeBoard,
    .setInteger = Ogc_setIntegerValue,
    .getInteger = Ogc_getIntegerValue,
    .setBoolean = Ogc_setBooleanValue,
    .getBoolean = Ogc_getBooleanValue,
    .setFloat = Ogc_setFloatValue,
    .getFloat = Ogc_getFloatValue,
    .setString = Ogc_setStringValue,
    .getString = Ogc_getStringValue,
    .setEnumeration = Ogc_setEnumerationValue,
    .getEnumeration = Ogc_getEnumerationValue,
    .executeCommand = Ogc_executeCommand,
};

}   // namespace orvo::cognex

#pragma once

#include <cstdint>

#include "sim/cameralib/CameraCall.h"

/// What both camera libraries do in the same way, each under its own name for it.
namespace orvo::sim::calls {

/// `boardIndex()` finds the board or throws CameraError.
template <typename Describe, typename FindBoard>
int32_t openLibrary(const char* function, uint64_t* library, Describe describe, FindBoard boardIndex)
{
    return cameraCall(
        function, describe,
        [&] {
            require(library);
            *library = Handles::instance().openLibrary(boardIndex());
            return 0;
        },
        ValueOut(library, [&](CallText& words) { describeLibrary(words, *library); }));
}

int32_t closeLibrary(const char* function, uint64_t library);

/// `port()` finds the port of the camera that is meant, or throws CameraError.
template <typename Describe, typename FindPort>
int32_t addCamera(const char* function, uint64_t library, uint64_t* camera, Describe describe, FindPort port)
{
    return cameraCall(
        function, describe,
        [&] {
            require(camera);
            *camera = Handles::instance().addCamera(library, port());
            return 0;
        },
        ValueOut(camera, [&](CallText& words) { describeCamera(words, *camera); }));
}

/// `record(handle)` makes the record of a handle whose identity has just been read, under its mutex. Null
/// for a handle that has ended and for a camera that doesn't answer.
const void* cameraInfo(const char* function, uint64_t camera, const void* (*record)(CameraHandle& handle));

/// Never null.
const char* errorText(const char* function, int32_t code);

/// A call to the camera itself, without further arguments.
int32_t toCamera(const char* function, uint64_t camera, CameraStatus (*action)(Camera& camera, uint64_t by));

int32_t setInteger(const char* function, uint64_t camera, const char* name, int64_t value);
int32_t getInteger(const char* function, uint64_t camera, const char* name, int64_t* value);
int32_t setBoolean(const char* function, uint64_t camera, const char* name, int32_t value);
int32_t getBoolean(const char* function, uint64_t camera, const char* name, int32_t* value);
int32_t setFloat(const char* function, uint64_t camera, const char* name, double value);
int32_t getFloat(const char* function, uint64_t camera, const char* name, double* value);
/// `type`: of strings and enumerations.
int32_t setText(const char* function, ParameterType type, uint64_t camera, const char* name,
                const char* text);
int32_t getText(const char* function, ParameterType type, uint64_t camera, const char* name, char** text);
int32_t executeCommand(const char* function, uint64_t camera, const char* name);

}   // namespace orvo::sim::calls

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <type_traits>

#include "sim/call/Call.h"
#include "sim/cameralib/Handles.h"
#include "sim/seam/BoardTypes.h"
#include "sim/seam/Camera.h"

/// What both camera libraries need for their exports.
namespace orvo::sim {

struct CameraFailure {
    static int32_t numberOf(const std::exception& error);
    [[noreturn]] static void refuse(int32_t number);
};

template <typename... Arguments>
auto cameraCall(const char* function, Arguments... arguments)
{
    return Call(function, CameraFailure{}, arguments...);
}

inline auto libraryArgument(uint64_t library)
{
    return symbol("library", [=] { return Handles::instance().librarySymbol(library); });
}

inline auto cameraArgument(uint64_t camera)
{
    return symbol("camera", [=] { return Handles::instance().cameraSymbol(camera); });
}

/// A value behind a pointer, which `argumentOf(value)` writes as it would write an argument. A call that the
/// script answers without bytes hands out nothing.
template <typename Value, typename ArgumentOf>
struct ValueOut {
    ValueOut(Value* pointer, ArgumentOf argument) : value(pointer), argumentOf(argument) {}

    void take(const CallPass& pass) const
    {
        if (pass.bytes && value)
            std::memcpy(value, pass.bytes, std::min(pass.size, sizeof *value));
    }
    void show(CallText& text, const CallPass& pass) const
    {
        if (value && (!pass.answered || pass.bytes))
            argumentOf (*value)(text);
    }

    Value* value;
    ArgumentOf argumentOf;
};

/// The address of a text: the script's bytes are that text.
struct TextOut {
    void take(const CallPass& pass) const;
    void show(CallText& out, const CallPass& pass) const;

    char** text;
};

/// Throws CameraError unless there is a board of that index whose cameras are of that family.
void requireFamily(uint32_t boardIndex, const CameraFamily& family);

/// The camera of a handle. Throws CameraError for a handle that has ended.
Camera& cameraOf(uint64_t handle);

/// The frame of the function that describes a camera: null for a handle that has ended, and for a camera
/// that doesn't answer. `record(handle)` makes the record of a handle whose identity has just been read,
/// under its mutex.
const void* describeCamera(const char* function, uint64_t camera,
                           const void* (*record)(CameraHandle& handle));

// Parameters: the frames of the functions of ParameterFunctions.h.

ParameterValue parameterValueOf(const char* text);
ParameterValue parameterValueOf(double number);
template <std::integral Number>
ParameterValue parameterValueOf(Number number)
{
    ParameterValue value;
    value.integer = number;
    return value;
}
void writeParameter(uint64_t camera, const char* name, ParameterType type, const ParameterValue& value);

template <typename Value>
int32_t setParameter(const char* function, ParameterType type, uint64_t camera, const char* name, Value value)
{
    const char* const valueName = std::is_pointer_v<Value> ? "text" : "value";
    return cameraCall(function, cameraArgument(camera), named("name", name), named(valueName, value))
        .run([&] { writeParameter(camera, name, type, parameterValueOf(value)); });
}

/// Reads a parameter for the pointer that it is handed out by. Throws CameraError for a null one.
ParameterValue readParameter(uint64_t camera, const char* name, ParameterType type, const void* out);
int32_t getParameter(const char* function, ParameterType type, uint64_t camera, const char* name,
                     char** text);

template <typename Number>
int32_t getParameter(const char* function, ParameterType type, uint64_t camera, const char* name,
                     Number* value)
{
    const auto body = [&] {
        const ParameterValue read = readParameter(camera, name, type, value);
        *value = std::is_floating_point_v<Number> ? static_cast<Number>(read.real)
                                                  : static_cast<Number>(read.integer);
    };
    return cameraCall(function, cameraArgument(camera), named("name", name))
        .run(body, ValueOut(value, [](Number number) { return named("value", number); }));
}

int32_t executeCommand(const char* function, uint64_t camera, const char* name);

}   // namespace orvo::sim

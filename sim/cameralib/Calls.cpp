#include "sim/cameralib/Calls.h"

#include <cstring>

namespace orvo::sim::calls {

namespace {

CallText& describeParameter(CallText& words, uint64_t camera, const char* name)
{
    return describeCamera(words, camera).text("name", name);
}

void write(uint64_t camera, const char* name, ParameterType type, const ParameterValue& value)
{
    require(name);
    require(Handles::instance().camera(camera)->camera->write(camera, name, type, value));
}

ParameterValue read(uint64_t camera, const char* name, ParameterType type, const void* out)
{
    require(name);
    require(out);
    ParameterValue value;
    require(Handles::instance().camera(camera)->camera->read(camera, name, type, value));
    return value;
}

}   // namespace

int32_t closeLibrary(const char* function, uint64_t library)
{
    return cameraCall(
        function, [&](CallText& words) { describeLibrary(words, library); },
        [&] {
            Handles::instance().closeLibrary(library);
            return 0;
        });
}

namespace {

/// A function that answers an address: null from an answered call, or the script's bytes.
template <typename Address, typename Describe, typename Find, typename Show>
Address addressCall(const char* function, Describe describe, Find find, Show show)
{
    CallRecorder& recorder = orvo_sim_core()->calls();
    if (!recorder.isWatching())
        return find();
    CallText arguments;
    describe(arguments);
    const CallPass pass = recorder.enter(function, arguments.str());
    const Address result = pass.answered ? reinterpret_cast<Address>(pass.bytes) : find();
    CallText rest;
    show(rest, result);
    recorder.leave(pass, rest.str());
    return result;
}

}   // namespace

const char* errorText(const char* function, int32_t code)
{
    return addressCall<const char*>(
        function, [&](CallText& words) { words.number("code", code); },
        [&] { return cameraErrorTextOf(code); },
        [](CallText& words, const char* text) { words.result(CallText::quoted(text)); });
}

const void* cameraInfo(const char* function, uint64_t camera, const void* (*record)(CameraHandle& handle))
{
    return addressCall<const void*>(
        function, [&](CallText& words) { describeCamera(words, camera); },
        [&]() -> const void* {
            try {
                const auto handle = Handles::instance().camera(camera);
                const std::lock_guard lock(handle->mutex);
                require(handle->camera->identify(handle->identity));
                return record(*handle);
            } catch (const std::exception&) {
                return nullptr;
            }
        },
        [](CallText& words, const void* info) { words.result(info ? "set" : CallText::kNull); });
}

int32_t toCamera(const char* function, uint64_t camera, CameraStatus (*action)(Camera& camera, uint64_t by))
{
    return cameraCall(
        function, [&](CallText& words) { describeCamera(words, camera); },
        [&] { return static_cast<int32_t>(action(*Handles::instance().camera(camera)->camera, camera)); });
}

int32_t setInteger(const char* function, uint64_t camera, const char* name, int64_t value)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name).number("value", value); },
        [&] {
            ParameterValue wanted;
            wanted.integer = value;
            write(camera, name, ParameterType::Integer, wanted);
            return 0;
        });
}

int32_t getInteger(const char* function, uint64_t camera, const char* name, int64_t* value)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name); },
        [&] {
            *value = read(camera, name, ParameterType::Integer, value).integer;
            return 0;
        },
        ValueOut(value, [&](CallText& words) { words.number("value", *value); }));
}

int32_t setBoolean(const char* function, uint64_t camera, const char* name, int32_t value)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name).number("value", value); },
        [&] {
            ParameterValue wanted;
            wanted.integer = value;
            write(camera, name, ParameterType::Boolean, wanted);
            return 0;
        });
}

int32_t getBoolean(const char* function, uint64_t camera, const char* name, int32_t* value)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name); },
        [&] {
            *value = static_cast<int32_t>(read(camera, name, ParameterType::Boolean, value).integer);
            return 0;
        },
        ValueOut(value, [&](CallText& words) { words.number("value", *value); }));
}

int32_t setFloat(const char* function, uint64_t camera, const char* name, double value)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name).real("value", value); },
        [&] {
            ParameterValue wanted;
            wanted.real = value;
            write(camera, name, ParameterType::Float, wanted);
            return 0;
        });
}

int32_t getFloat(const char* function, uint64_t camera, const char* name, double* value)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name); },
        [&] {
            *value = read(camera, name, ParameterType::Float, value).real;
            return 0;
        },
        ValueOut(value, [&](CallText& words) { words.real("value", *value); }));
}

int32_t setText(const char* function, ParameterType type, uint64_t camera, const char* name, const char* text)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name).text("text", text); },
        [&] {
            require(text);
            ParameterValue wanted;
            const size_t length = std::strlen(text);
            if (length >= sizeof wanted.text)   // longer than any parameter takes
                throw CameraError(CameraStatus::OutOfRange);
            std::memcpy(wanted.text, text, length);
            write(camera, name, type, wanted);
            return 0;
        });
}

int32_t getText(const char* function, ParameterType type, uint64_t camera, const char* name, char** text)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name); },
        [&] {
            const ParameterValue value = read(camera, name, type, text);
            const auto handle = Handles::instance().camera(camera);
            const std::lock_guard lock(handle->mutex);
            handle->text = value.text;
            *text = handle->text.data();
            return 0;
        },
        TextOut{text});
}

int32_t executeCommand(const char* function, uint64_t camera, const char* name)
{
    return cameraCall(
        function, [&](CallText& words) { describeParameter(words, camera, name); },
        [&] {
            require(name);
            return static_cast<int32_t>(Handles::instance().camera(camera)->camera->execute(camera, name));
        });
}

}   // namespace orvo::sim::calls

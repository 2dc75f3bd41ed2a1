#include "sim/cameralib/CameraCall.h"

#include <cstring>

#include "sim/seam/Core.h"

namespace orvo::sim {

int32_t CameraFailure::numberOf(const std::exception& error)
{
    const auto* const known = dynamic_cast<const CameraError*>(&error);
    return static_cast<int32_t>(known ? known->status() : CameraStatus::InternalFault);
}

void CameraFailure::refuse(int32_t number)
{
    throw CameraError(static_cast<CameraStatus>(number));
}

void TextOut::take(const CallPass& pass) const
{
    if (pass.bytes && text)
        *text = reinterpret_cast<char*>(const_cast<std::byte*>(pass.bytes));   // a copy for good
}

void TextOut::show(CallText& out, const CallPass& pass) const
{
    if (text && (!pass.answered || pass.bytes))
        out.add("text", *text);
}

void requireFamily(uint32_t boardIndex, const CameraFamily& family)
{
    BoardDescription board;
    if (!orvo_sim_core()->findBoard(boardIndex, board) || &cameraFamilyOf(board.type) != &family)
        throw CameraError(CameraStatus::NoBoard);
}

Camera& cameraOf(uint64_t handle)
{
    return *Handles::instance().camera(handle)->camera;
}

const void* describeCamera(const char* function, uint64_t camera, const void* (*record)(CameraHandle& handle))
{
    const auto body = [&] {
        const auto handle = Handles::instance().camera(camera);
        const os::MutexLock lock(handle->mutex);
        require(handle->camera->identify(handle->identity));
        return record(*handle);
    };
    return cameraCall(function, cameraArgument(camera)).run(body, AddressOut(CallText::setOrNull));
}

ParameterValue parameterValueOf(double number)
{
    ParameterValue value;
    value.real = number;
    return value;
}

ParameterValue parameterValueOf(const char* text)
{
    require(text);
    ParameterValue value;
    const size_t length = std::strlen(text);
    if (length >= sizeof value.text)   // longer than any parameter takes
        throw CameraError(CameraStatus::OutOfRange);
    std::memcpy(value.text, text, length);
    return value;
}

void writeParameter(uint64_t camera, const char* name, ParameterType type, const ParameterValue& value)
{
    require(name);
    require(cameraOf(camera).write(camera, name, type, value));
}

ParameterValue readParameter(uint64_t camera, const char* name, ParameterType type, const void* out)
{
    require(name);
    require(out);
    ParameterValue value;
    require(cameraOf(camera).read(camera, name, type, value));
    return value;
}

int32_t getParameter(const char* function, ParameterType type, uint64_t camera, const char* name, char** text)
{
    const auto body = [&] {
        const ParameterValue value = readParameter(camera, name, type, text);
        const auto handle = Handles::instance().camera(camera);
        const os::MutexLock lock(handle->mutex);
        handle->text = value.text;
        *text = handle->text.data();
    };
    return cameraCall(function, cameraArgument(camera), named("name", name)).run(body, TextOut{text});
}

int32_t executeCommand(const char* function, uint64_t camera, const char* name)
{
    return cameraCall(function, cameraArgument(camera), named("name", name)).run([&] {
        require(name);
        require(cameraOf(camera).execute(camera, name));
    });
}

}   // namespace orvo::sim

#include "camera/Camera.h"

#include <array>

#include "AIKException.h"

namespace orvo::cognex {

std::shared_ptr<Camera> locked(const std::weak_ptr<Camera>& camera)
{
    return lockedOrThrow(camera, "No camera is connected");
}

void LibraryCamera::getBooleanValue(const std::string& name, bool* value)
{
    *value = parameters().boolean(name);
}

void LibraryCamera::getIntegerValue(const std::string& name, int64_t* value)
{
    *value = parameters().integer(name);
}

void LibraryCamera::getFloatValue(const std::string& name, double* value)
{
    *value = parameters().floatingPoint(name);
}

void LibraryCamera::getStringValue(const std::string& name, std::string* value)
{
    std::array<char, 128> buffer{};
    *value = parameters().string(name, buffer.data());
}

}   // namespace orvo::cognex

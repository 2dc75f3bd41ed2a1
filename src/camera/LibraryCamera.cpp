#include "camera/LibraryCamera.h"

#include <array>

namespace orvo::cognex {

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

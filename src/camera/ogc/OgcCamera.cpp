#include "camera/ogc/OgcCamera.h"

#include "camera/ogc/OgcLibrary.h"

namespace orvo::cognex {

OgcCamera::OgcCamera(uint64_t handle) : LibraryCamera(kOgcLibrary, handle) {}

std::string OgcCamera::getName()
{
    const auto* const record = static_cast<const OgcCameraInfo*>(Ogc_getCameraInfo(handle()));
    return record && record->name ? record->name : "";
}

void OgcCamera::setBooleanValue(const std::string& name, bool value)
{
    parameters().setBoolean(name, value);
}

void OgcCamera::setIntegerValue(const std::string& name, int64_t value)
{
    parameters().setInteger(name, value);
}

void OgcCamera::setFloatValue(const std::string& name, double value)
{
    parameters().setFloatingPoint(name, value);
}

void OgcCamera::setStringValue(const std::string& name, const std::string& value)
{
    parameters().setString(name, value.c_str());
}

}   // namespace orvo::cognex

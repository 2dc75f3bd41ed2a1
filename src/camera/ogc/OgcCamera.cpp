#include "camera/ogc/OgcCamera.h"

#include "AIKException.h"
#include "camera/ConnectionStrategy.h"
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

std::vector<std::shared_ptr<Camera>> OgcCamPort::detect()
{
    uint64_t handle = 0;
    kOgcLibrary.check(Ogc_getCameraOnPort(m_library, static_cast<uint32_t>(portIndex()), &handle));
    const auto* const record = static_cast<const OgcCameraInfo*>(Ogc_getCameraInfo(handle));
    if (!record || !record->first || !record->name)
        throw AIKException("Cam info is not defined");
    kOgcLibrary.check(Ogc_connectCamera(handle));
    const auto camera = std::make_shared<OgcCamera>(handle);
    // The camera is open from here on, and the port shows it; update() replaces this with an equal connection.
    setConnection(std::make_shared<ConnectedConnection>(camera));
    return {camera};
}

}   // namespace orvo::cognex

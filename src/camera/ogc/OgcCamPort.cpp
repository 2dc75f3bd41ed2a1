#include "camera/ogc/OgcCamPort.h"

#include "AIKException.h"
#include "camera/ConnectedConnection.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcLibrary.h"

namespace orvo::cognex {

std::vector<std::shared_ptr<Camera>> OgcCamPort::detect()
{
    uint64_t handle = 0;
    kOgcLibrary.check(Ogc_getCameraOnPort(m_library, static_cast<uint32_t>(portIndex()), &handle));
    const auto* const record = static_cast<const OgcCameraInfo*>(Ogc_getCameraInfo(handle));
    if (!record || !record->first || !record->name)
        throw AIKException("Cam info is not defined");
    kOgcLibrary.check(Ogc_connectCamera(handle));
    const auto camera = std::make_shared<OgcCamera>(handle);
    // The camera is open from here on, and the port says so; update() then puts the like in its place.
    setConnection(std::make_shared<ConnectedConnection>(camera));
    return {camera};
}

}   // namespace orvo::cognex

#include "camera/ogc/OgcCameraConnector.h"

#include "AIKException.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/binding/BrdFunctions.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcLibrary.h"
#include "tools/logging/Record.h"

namespace orvo::cognex {

namespace {

using tools::logging::kTolerated;
using tools::logging::recordFailure;

// The scan's arguments, in the library's own terms: the ports, and a bound.
constexpr uint32_t kPortMask = 255;
constexpr uint32_t kScanBound = 5000;

}   // namespace

OgcCameraConnector::OgcCameraConnector()
    : CameraConnector(kOgcLibrary, std::make_unique<OgcCameraConfigurator>())
{
    refreshState();
}

void OgcCameraConnector::initialize()
{
    if (library() != 0)
        return;
    const auto appletHandle = reinterpret_cast<uint64_t>(locked(applet())->handle());
    uint64_t opened = 0;
    kOgcLibrary.check(Ogc_openBoard(appletHandle, 0, &opened));
    enterLibrary(opened);
    refreshState();
}

void OgcCameraConnector::detect()
{
    if (library() == 0)
        throw AIKException("Camera connector is not initialized.");
    takeDownPorts();
    try {
        scan();
    } catch (const std::exception& failure) {
        recordFailure(logger(), kTolerated, [&](std::ostream& text) { text << failure.what(); });
    }
    refreshState();
}

void OgcCameraConnector::scan()
{
    kOgcLibrary.check(Ogc_scanPorts(library(), kPortMask, kScanBound, 0));
    const auto count =
        static_cast<int32_t>(plausibleCount(static_cast<uint32_t>(Ogc_getFoundCount(library()))));
    for (int32_t position = 0; position < count; ++position) {
        try {
            const auto port = std::make_shared<OgcCamPort>(position, library());
            port->onCreated();
            port->update();
            ports()[position] = port;
        } catch (const std::exception& failure) {
            recordFailure(logger(), kTolerated, [&](std::ostream& text) {
                text << "Cannot detect cameras on port " << position << ": " << failure.what();
            });
        } catch (...) {   // one port less is no reason to lose the others
        }
    }
}

void OgcCameraConnector::close()
{
    if (library() == 0)
        throw AIKException("Camera connector is not initialized");
    leaveLibrary();
}

}   // namespace orvo::cognex

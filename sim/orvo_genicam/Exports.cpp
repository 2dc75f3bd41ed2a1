#include "sim/orvo_genicam/orvo_genicam.h"

#include <cstddef>
#include <string>

#include "sim/cameralib/CameraCall.h"

using namespace orvo::sim;

namespace {

constexpr uint32_t kMaskedPorts = 8;

// Callers read the name by its place.
static_assert(offsetof(OgcCameraInfo, name) == 8);

const void* recordOf(CameraHandle& handle) ORVO_REQUIRES(handle.mutex)
{
    auto& info = handle.place<OgcCameraInfo>();
    info = {handle.identity.model, handle.identity.name};
    return &info;
}

std::string appletSymbol(uint64_t applet)
{
    uint32_t index = 0;
    if (applet == 0)
        return CallText::kNull;
    return orvo_sim_core()->findOpenBoard(applet, index) ? std::to_string(index) : CallText::kUnknown;
}

}   // namespace

int32_t Ogc_openBoard(uint64_t applet, int32_t zero, uint64_t* library)
{
    const auto body = [&] {
        require(library);
        uint32_t index = 0;
        if (!orvo_sim_core()->findOpenBoard(applet, index))
            throw CameraError(CameraStatus::NoBoard);
        requireFamily(index, kGenICam);
        *library = Handles::instance().openLibrary(index);
    };
    return cameraCall(__func__, symbol("applet", [=] { return appletSymbol(applet); }), named("zero", zero))
        .run(body, ValueOut(library, libraryArgument));
}

int32_t Ogc_closeBoard(uint64_t library)
{
    return cameraCall(__func__, libraryArgument(library)).run([&] {
        Handles::instance().closeLibrary(library);
    });
}

int32_t Ogc_scanPorts(uint64_t library, uint32_t mask, uint32_t bound, uint32_t zero)
{
    return cameraCall(__func__, libraryArgument(library), named("mask", mask), named("bound", bound),
                      named("zero", zero))
        .run([&] { Handles::instance().scan(library, mask, kMaskedPorts); });
}

int32_t Ogc_getFoundCount(uint64_t library)
{
    return cameraCall(__func__, libraryArgument(library)).run([&]() -> int32_t {
        try {
            return static_cast<int32_t>(Handles::instance().found(library).size());
        } catch (const CameraError&) {   // the count has no form for an error
            return 0;
        }
    });
}

int32_t Ogc_getCameraOnPort(uint64_t library, uint32_t port, uint64_t* camera)
{
    const auto body = [&] {
        require(camera);
        const auto ports = Handles::instance().found(library);
        if (port >= ports.size())
            throw CameraError(CameraStatus::NoCamera);
        *camera = Handles::instance().addCamera(library, ports[port]);
    };
    return cameraCall(__func__, libraryArgument(library), named("port", port))
        .run(body, ValueOut(camera, cameraArgument));
}

const void* Ogc_getCameraInfo(uint64_t camera)
{
    return describeCamera(__func__, camera, recordOf);
}

int32_t Ogc_connectCamera(uint64_t camera)
{
    return cameraCall(__func__, cameraArgument(camera)).run([&] {
        require(cameraOf(camera).connect(camera, false));
    });
}

ORVO_SIM_DEFINE_PARAMETER_FUNCTIONS(Ogc)

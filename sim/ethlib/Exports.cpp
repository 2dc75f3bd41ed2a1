#include "sim/ethlib/ethlib.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string>

#include "sim/cameralib/CameraCall.h"

using namespace orvo::sim;

namespace {

constexpr uint32_t kAllPorts = 0xFFFF'FFFF;
constexpr uint32_t kMaskedPorts = 32;

// Callers read the name by its place.
static_assert(offsetof(EthCameraInfo, name) == 32);

bool isFound(uint64_t library, uint32_t port)
{
    const auto ports = Handles::instance().found(library);
    return std::find(ports.begin(), ports.end(), port) != ports.end();
}

const void* recordOf(CameraHandle& handle) ORVO_REQUIRES(handle.mutex)
{
    auto& info = handle.place<EthCameraInfo>();
    info.port = handle.port;
    std::memcpy(info.serial, handle.identity.serial, sizeof info.serial - 1);
    std::memcpy(info.name, handle.identity.name, sizeof info.name);
    return &info;
}

}   // namespace

int32_t Eth_openBoard(int32_t boardIndex, int32_t zero, uint64_t* library)
{
    const auto body = [&] {
        require(library);
        requireFamily(static_cast<uint32_t>(boardIndex), kGigEVision);
        *library = Handles::instance().openLibrary(static_cast<uint32_t>(boardIndex));
    };
    return cameraCall(__func__, named("boardIndex", boardIndex), named("zero", zero))
        .run(body, ValueOut(library, libraryArgument));
}

int32_t Eth_closeBoard(uint64_t library)
{
    return cameraCall(__func__, libraryArgument(library)).run([&] {
        Handles::instance().closeLibrary(library);
    });
}

int32_t Eth_scanPorts(uint64_t library, uint32_t mask, uint32_t bound)
{
    return cameraCall(__func__, libraryArgument(library), named("mask", mask), named("bound", bound))
        .run([&] { Handles::instance().scan(library, mask, kMaskedPorts); });
}

int32_t Eth_getCameraCount(uint64_t library, uint32_t port)
{
    return cameraCall(__func__, libraryArgument(library), named("port", port)).run([&] {
        return isFound(library, port) ? 1 : 0;
    });
}

int32_t Eth_getCameraByIndex(uint64_t library, uint32_t port, uint32_t index, uint64_t* camera)
{
    const auto body = [&] {
        require(camera);
        if (index > 0 || !isFound(library, port))
            throw CameraError(CameraStatus::NoCamera);
        *camera = Handles::instance().addCamera(library, port);
    };
    return cameraCall(__func__, libraryArgument(library), named("port", port), named("index", index))
        .run(body, ValueOut(camera, cameraArgument));
}

const void* Eth_getCameraInfo(uint64_t camera)
{
    return describeCamera(__func__, camera, recordOf);
}

int32_t Eth_releaseCamera(uint64_t camera)
{
    return cameraCall(__func__, cameraArgument(camera)).run([&] { Handles::instance().endCamera(camera); });
}

int32_t Eth_connectCamera(uint64_t camera)
{
    return cameraCall(__func__, cameraArgument(camera)).run([&] {
        require(cameraOf(camera).connect(camera, true));
    });
}

int32_t Eth_disconnectCamera(uint64_t camera)
{
    return cameraCall(__func__, cameraArgument(camera)).run([&] {
        require(cameraOf(camera).disconnect(camera));
        Handles::instance().endCamera(camera);
    });
}

int32_t Eth_startAcquisition(uint64_t camera)
{
    return cameraCall(__func__, cameraArgument(camera)).run([&] {
        require(cameraOf(camera).setStarted(camera, true));
    });
}

int32_t Eth_stopAcquisition(uint64_t camera)
{
    return cameraCall(__func__, cameraArgument(camera)).run([&] {
        require(cameraOf(camera).setStarted(camera, false));
    });
}

ORVO_SIM_DEFINE_PARAMETER_FUNCTIONS(Eth)

const char* Eth_getErrorDescription(int32_t code)
{
    return cameraCall(__func__, named("code", code)).run([&] { return cameraErrorTextOf(code); });
}

int32_t Eth_setCameraRegister(uint64_t camera, const char* name, const uint32_t* value, uint32_t one)
{
    const auto shown = [=] { return value ? std::to_string(*value) : CallText::kNull; };
    return cameraCall(__func__, cameraArgument(camera), named("name", name), symbol("value", shown),
                      named("one", one))
        .run([&] {
            require(name);
            require(value);
            if (one != 1)
                throw CameraError(CameraStatus::WrongArgument);
            require(cameraOf(camera).writeRegister(camera, name, *value));
        });
}

int32_t Eth_sendActionCommand(uint64_t library, uint32_t port, uint32_t all, uint32_t deviceKey,
                              uint32_t groupKey, uint32_t groupMask)
{
    return cameraCall(__func__, libraryArgument(library), named("port", port), named("all", all),
                      named("deviceKey", deviceKey), named("groupKey", groupKey),
                      named("groupMask", groupMask))
        .run([&] {
            const uint32_t board = Handles::instance().boardOf(library);
            const ActionCommand command{deviceKey, groupKey, groupMask};
            if (all == kAllPorts)
                orvo_sim_core()->sendToAll(board, command);
            else
                orvo_sim_core()->sendToPort(board, port, command);
        });
}

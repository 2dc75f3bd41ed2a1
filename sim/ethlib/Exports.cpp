#include "sim/ethlib/ethlib.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "sim/cameralib/Calls.h"
#include "sim/seam/BoardTypes.h"

using namespace orvo::sim;

namespace {

constexpr uint32_t kAllPorts = 0xFFFF'FFFF;
constexpr uint32_t kMaskedPorts = 32;

// Callers read the name by its place.
static_assert(offsetof(EthCameraInfo, name) == 32);

uint32_t gigEVisionBoard(int32_t boardIndex)
{
    BoardDescription board;
    if (!orvo_sim_core()->findBoard(static_cast<uint32_t>(boardIndex), board) ||
        cameraFamilyOf(board.type) != CameraFamily::GigEVision)
        throw CameraError(CameraStatus::NoBoard);
    return static_cast<uint32_t>(boardIndex);
}

bool isFound(uint64_t library, uint32_t port)
{
    const auto ports = Handles::instance().found(library);
    return std::find(ports.begin(), ports.end(), port) != ports.end();
}

const void* recordOf(CameraHandle& handle)
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
    return calls::openLibrary(
        "Eth_openBoard", library,
        [&](CallText& words) { words.number("boardIndex", boardIndex).number("zero", zero); },
        [&] { return gigEVisionBoard(boardIndex); });
}

int32_t Eth_closeBoard(uint64_t library)
{
    return calls::closeLibrary("Eth_closeBoard", library);
}

int32_t Eth_scanPorts(uint64_t library, uint32_t mask, uint32_t bound)
{
    return cameraCall(
        "Eth_scanPorts",
        [&](CallText& words) { describeLibrary(words, library).number("mask", mask).number("bound", bound); },
        [&] {
            Handles::instance().scan(library, mask, kMaskedPorts);
            return 0;
        });
}

int32_t Eth_getCameraCount(uint64_t library, uint32_t port)
{
    return cameraCall(
        "Eth_getCameraCount", [&](CallText& words) { describeLibrary(words, library).number("port", port); },
        [&] { return isFound(library, port) ? 1 : 0; });
}

int32_t Eth_getCameraByIndex(uint64_t library, uint32_t port, uint32_t index, uint64_t* camera)
{
    return calls::addCamera(
        "Eth_getCameraByIndex", library, camera,
        [&](CallText& words) { describeLibrary(words, library).number("port", port).number("index", index); },
        [&] {
            if (index > 0 || !isFound(library, port))
                throw CameraError(CameraStatus::NoCamera);
            return port;
        });
}

const void* Eth_getCameraInfo(uint64_t camera)
{
    return calls::cameraInfo("Eth_getCameraInfo", camera, recordOf);
}

int32_t Eth_releaseCamera(uint64_t camera)
{
    return cameraCall(
        "Eth_releaseCamera", [&](CallText& words) { describeCamera(words, camera); },
        [&] {
            Handles::instance().endCamera(camera);
            return 0;
        });
}

int32_t Eth_connectCamera(uint64_t camera)
{
    return calls::toCamera("Eth_connectCamera", camera,
                           [](Camera& reached, uint64_t by) { return reached.connect(by, true); });
}

int32_t Eth_disconnectCamera(uint64_t camera)
{
    return calls::toCamera("Eth_disconnectCamera", camera, [](Camera& reached, uint64_t by) {
        const CameraStatus status = reached.disconnect(by);
        if (status == CameraStatus::Ok)
            Handles::instance().endCamera(by);
        return status;
    });
}

int32_t Eth_startAcquisition(uint64_t camera)
{
    return calls::toCamera("Eth_startAcquisition", camera,
                           [](Camera& reached, uint64_t by) { return reached.setStarted(by, true); });
}

int32_t Eth_stopAcquisition(uint64_t camera)
{
    return calls::toCamera("Eth_stopAcquisition", camera,
                           [](Camera& reached, uint64_t by) { return reached.setStarted(by, false); });
}

int32_t Eth_setIntegerValue(uint64_t camera, const char* name, int64_t value)
{
    return calls::setInteger("Eth_setIntegerValue", camera, name, value);
}

int32_t Eth_getIntegerValue(uint64_t camera, const char* name, int64_t* value)
{
    return calls::getInteger("Eth_getIntegerValue", camera, name, value);
}

int32_t Eth_setBooleanValue(uint64_t camera, const char* name, int32_t value)
{
    return calls::setBoolean("Eth_setBooleanValue", camera, name, value);
}

int32_t Eth_getBooleanValue(uint64_t camera, const char* name, int32_t* value)
{
    return calls::getBoolean("Eth_getBooleanValue", camera, name, value);
}

int32_t Eth_setFloatValue(uint64_t camera, const char* name, double value)
{
    return calls::setFloat("Eth_setFloatValue", camera, name, value);
}

int32_t Eth_getFloatValue(uint64_t camera, const char* name, double* value)
{
    return calls::getFloat("Eth_getFloatValue", camera, name, value);
}

int32_t Eth_setStringValue(uint64_t camera, const char* name, const char* text)
{
    return calls::setText("Eth_setStringValue", ParameterType::String, camera, name, text);
}

int32_t Eth_getStringValue(uint64_t camera, const char* name, char** text)
{
    return calls::getText("Eth_getStringValue", ParameterType::String, camera, name, text);
}

int32_t Eth_setEnumerationValue(uint64_t camera, const char* name, const char* text)
{
    return calls::setText("Eth_setEnumerationValue", ParameterType::Enumeration, camera, name, text);
}

int32_t Eth_getEnumerationValue(uint64_t camera, const char* name, char** text)
{
    return calls::getText("Eth_getEnumerationValue", ParameterType::Enumeration, camera, name, text);
}

int32_t Eth_executeCommand(uint64_t camera, const char* name)
{
    return calls::executeCommand("Eth_executeCommand", camera, name);
}

const char* Eth_getErrorDescription(int32_t code)
{
    return calls::errorText("Eth_getErrorDescription", code);
}

int32_t Eth_setCameraRegister(uint64_t camera, const char* name, const uint32_t* value, uint32_t one)
{
    return cameraCall(
        "Eth_setCameraRegister",
        [&](CallText& words) {
            describeCamera(words, camera).text("name", name);
            words.word("value", value ? std::to_string(*value) : CallText::kNull).number("one", one);
        },
        [&] {
            require(name);
            require(value);
            if (one != 1)
                throw CameraError(CameraStatus::WrongArgument);
            Camera& reached = *Handles::instance().camera(camera)->camera;
            return static_cast<int32_t>(reached.writeRegister(camera, name, *value));
        });
}

int32_t Eth_sendActionCommand(uint64_t library, uint32_t port, uint32_t all, uint32_t deviceKey,
                              uint32_t groupKey, uint32_t groupMask)
{
    return cameraCall(
        "Eth_sendActionCommand",
        [&](CallText& words) {
            describeLibrary(words, library).number("port", port).number("all", all);
            words.number("deviceKey", deviceKey).number("groupKey", groupKey).number("groupMask", groupMask);
        },
        [&] {
            const uint32_t board = Handles::instance().boardOf(library);
            const ActionCommand command{deviceKey, groupKey, groupMask};
            if (all == kAllPorts)
                orvo_sim_core()->sendToAll(board, command);
            else
                orvo_sim_core()->sendToPort(board, port, command);
            return 0;
        });
}

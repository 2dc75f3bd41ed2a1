#include "sim/orvo_genicam/orvo_genicam.h"

#include <cstddef>

#include "sim/cameralib/Calls.h"
#include "sim/seam/BoardTypes.h"

using namespace orvo::sim;

namespace {

constexpr uint32_t kMaskedPorts = 8;

// Callers read the name by its place.
static_assert(offsetof(OgcCameraInfo, name) == 8);

uint32_t genICamBoard(uint64_t applet)
{
    uint32_t index = 0;
    BoardDescription board;
    if (!orvo_sim_core()->findOpenBoard(applet, index) || !orvo_sim_core()->findBoard(index, board) ||
        cameraFamilyOf(board.type) != CameraFamily::GenICam)
        throw CameraError(CameraStatus::NoBoard);
    return index;
}

const void* recordOf(CameraHandle& handle)
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
    return calls::openLibrary(
        "Ogc_openBoard", library,
        [&](CallText& words) { words.word("applet", appletSymbol(applet)).number("zero", zero); },
        [&] { return genICamBoard(applet); });
}

int32_t Ogc_closeBoard(uint64_t library)
{
    return calls::closeLibrary("Ogc_closeBoard", library);
}

int32_t Ogc_scanPorts(uint64_t library, uint32_t mask, uint32_t bound, uint32_t zero)
{
    return cameraCall(
        "Ogc_scanPorts",
        [&](CallText& words) {
            describeLibrary(words, library).number("mask", mask).number("bound", bound).number("zero", zero);
        },
        [&] {
            Handles::instance().scan(library, mask, kMaskedPorts);
            return 0;
        });
}

int32_t Ogc_getFoundCount(uint64_t library)
{
    return cameraCall(
        "Ogc_getFoundCount", [&](CallText& words) { describeLibrary(words, library); },
        [&]() -> int32_t {
            try {
                return static_cast<int32_t>(Handles::instance().found(library).size());
            } catch (const CameraError&) {   // the count has no form for an error
                return 0;
            }
        });
}

int32_t Ogc_getCameraOnPort(uint64_t library, uint32_t port, uint64_t* camera)
{
    return calls::addCamera(
        "Ogc_getCameraOnPort", library, camera,
        [&](CallText& words) { describeLibrary(words, library).number("port", port); },
        [&] {
            const auto ports = Handles::instance().found(library);
            if (port >= ports.size())
                throw CameraError(CameraStatus::NoCamera);
            return ports[port];
        });
}

const void* Ogc_getCameraInfo(uint64_t camera)
{
    return calls::cameraInfo("Ogc_getCameraInfo", camera, recordOf);
}

int32_t Ogc_connectCamera(uint64_t camera)
{
    return calls::toCamera("Ogc_connectCamera", camera,
                           [](Camera& reached, uint64_t by) { return reached.connect(by, false); });
}

int32_t Ogc_setIntegerValue(uint64_t camera, const char* name, int64_t value)
{
    return calls::setInteger("Ogc_setIntegerValue", camera, name, value);
}

int32_t Ogc_getIntegerValue(uint64_t camera, const char* name, int64_t* value)
{
    return calls::getInteger("Ogc_getIntegerValue", camera, name, value);
}

int32_t Ogc_setBooleanValue(uint64_t camera, const char* name, int32_t value)
{
    return calls::setBoolean("Ogc_setBooleanValue", camera, name, value);
}

int32_t Ogc_getBooleanValue(uint64_t camera, const char* name, int32_t* value)
{
    return calls::getBoolean("Ogc_getBooleanValue", camera, name, value);
}

int32_t Ogc_setFloatValue(uint64_t camera, const char* name, double value)
{
    return calls::setFloat("Ogc_setFloatValue", camera, name, value);
}

int32_t Ogc_getFloatValue(uint64_t camera, const char* name, double* value)
{
    return calls::getFloat("Ogc_getFloatValue", camera, name, value);
}

int32_t Ogc_setStringValue(uint64_t camera, const char* name, const char* text)
{
    return calls::setText("Ogc_setStringValue", ParameterType::String, camera, name, text);
}

int32_t Ogc_getStringValue(uint64_t camera, const char* name, char** text)
{
    return calls::getText("Ogc_getStringValue", ParameterType::String, camera, name, text);
}

int32_t Ogc_setEnumerationValue(uint64_t camera, const char* name, const char* text)
{
    return calls::setText("Ogc_setEnumerationValue", ParameterType::Enumeration, camera, name, text);
}

int32_t Ogc_getEnumerationValue(uint64_t camera, const char* name, char** text)
{
    return calls::getText("Ogc_getEnumerationValue", ParameterType::Enumeration, camera, name, text);
}

int32_t Ogc_executeCommand(uint64_t camera, const char* name)
{
    return calls::executeCommand("Ogc_executeCommand", camera, name);
}

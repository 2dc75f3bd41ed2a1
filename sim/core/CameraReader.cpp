#include "sim/core/CameraReader.h"

#include <algorithm>
#include <limits>
#include <string>

#include "sim/cameras/CameraErrorTexts.h"
#include "sim/core/Core.h"
#include "sim/json/JsonObject.h"

namespace orvo::sim {

namespace {

constexpr int64_t kMostCalls = std::numeric_limits<int32_t>::max();
constexpr double kLargestReal = std::numeric_limits<double>::max();

template <size_t size>
void setText(char (&field)[size], const std::string& text)
{
    std::fill(std::begin(field), std::end(field), '\0');
    std::copy_n(text.begin(), std::min(text.size(), size - 1), field);
}

/// A text of the description that fits `field`; nothing if it isn't there.
template <size_t size>
void readText(JsonObject& object, const char* key, char (&field)[size])
{
    const auto value = object.find(key);
    if (!value)
        return;
    if (value->text().size() >= size)
        value->refuse("must be shorter than " + std::to_string(size) + " bytes");
    setText(field, value->text());
}

void presetText(ParameterSheet& parameters, const char* name, const char* text)
{
    ParameterValue value;
    setText(value.text, text);
    parameters.preset(name, value);
}

/// What a host reads of the identity.
void presetIdentity(CameraDescription& camera)
{
    presetText(camera.parameters, "DeviceVendorName", camera.identity.vendor);
    presetText(camera.parameters, "DeviceModelName", camera.identity.model);
    presetText(camera.parameters, "DeviceSerialNumber", camera.identity.serial);
    presetText(camera.parameters, "DeviceUserID", camera.identity.name);
}

ParameterValue valueFor(ParameterType type, const JsonValue& value)
{
    ParameterValue wanted;
    switch (type) {
    case ParameterType::Integer:
        wanted.integer =
            value.integer(std::numeric_limits<int64_t>::min(), std::numeric_limits<int64_t>::max());
        break;
    case ParameterType::Boolean:
        wanted.integer = value.boolean();
        break;
    case ParameterType::Float:
        wanted.real = value.number(-kLargestReal, kLargestReal);
        break;
    case ParameterType::String:
    case ParameterType::Enumeration:
        if (value.text().size() >= sizeof wanted.text)
            value.refuse("must be shorter than " + std::to_string(sizeof wanted.text) + " bytes");
        setText(wanted.text, value.text());
        break;
    case ParameterType::Command:
        value.refuse("must not be there: a command has no value");
    }
    return wanted;
}

void presetParameter(ParameterSheet& parameters, const std::string& name, const JsonValue& value)
{
    const CameraParameter* const parameter = parameters.find(name);
    if (!parameter)
        throw JsonError(value.place() + ": a camera has no parameter of that name");
    const CameraStatus status = parameters.preset(name, valueFor(parameter->type, value));
    if (status != CameraStatus::Ok)
        throw JsonError(value.place() + ": " + cameraErrorTextOf(static_cast<int32_t>(status)));
}

/// In an order in which the limits of one stand before the other is set: the sensor, the sizes, the offsets.
void readParameters(const JsonValue& values, ParameterSheet& parameters)
{
    enum class Turn { First, Second, Third };
    const auto turnOf = [&](const std::string& name) {
        const CameraParameter* const parameter = parameters.find(name);
        if (parameter && parameter->access == ParameterAccess::ReadOnly)
            return Turn::First;
        return name.starts_with("Offset") ? Turn::Third : Turn::Second;
    };
    for (const Turn turn : {Turn::First, Turn::Second, Turn::Third}) {
        values.object().eachMember([&](const std::string& name, const JsonValue& value) {
            if (turnOf(name) == turn)
                presetParameter(parameters, name, value);
        });
        if (turn == Turn::First)
            parameters.fitToSensor();
    }
}

CameraDescription readCamera(const JsonValue& entry, int32_t boardType, size_t boardIndex)
{
    JsonObject object = entry.object();
    const auto port = static_cast<uint32_t>(object.need("port").integer(0, Core::kMostPorts - 1));
    CameraDescription camera = standardCamera(boardType, boardIndex, port);
    readText(object, "vendor", camera.identity.vendor);
    readText(object, "model", camera.identity.model);
    readText(object, "serial", camera.identity.serial);
    readText(object, "name", camera.identity.name);
    presetIdentity(camera);
    if (const auto parameters = object.find("parameters"))
        readParameters(*parameters, camera.parameters);
    if (const auto calls = object.find("vanishAfterCalls"))
        camera.vanishAfterCalls = static_cast<uint64_t>(calls->integer(1, kMostCalls));
    object.refuseOthers();
    return camera;
}

}   // namespace

CameraDescription standardCamera(int32_t boardType, size_t boardIndex, uint32_t port)
{
    const std::string place = std::to_string(boardIndex) + "-" + std::to_string(port);
    CameraDescription camera;
    camera.port = port;
    camera.family = cameraFamilyOf(boardType);
    camera.parameters = ParameterSheet::standard(camera.family);
    setText(camera.identity.vendor, camera.parameters.text("DeviceVendorName"));
    setText(camera.identity.model, camera.parameters.text("DeviceModelName"));
    setText(camera.identity.serial, "SIM-" + place);
    setText(camera.identity.name, "Camera " + place);
    presetIdentity(camera);
    return camera;
}

std::vector<CameraDescription> readCameras(const JsonValue& list, int32_t boardType, size_t boardIndex)
{
    std::vector<CameraDescription> cameras;
    list.eachEntry([&](const JsonValue& entry) {
        cameras.push_back(readCamera(entry, boardType, boardIndex));
        const auto isThere = [&](const CameraDescription& other) {
            return other.port == cameras.back().port;
        };
        if (std::any_of(cameras.begin(), cameras.end() - 1, isThere))
            throw JsonError(entry.place() + ".port: another camera stands behind port " +
                            std::to_string(cameras.back().port));
    });
    return cameras;
}

}   // namespace orvo::sim

#include "sim/simulator/BoardsFile.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <string>

#include "sim/json/Json.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

namespace {

constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
constexpr double kLongestDelayMs = 3'600'000;
constexpr int64_t kAnyError =
    -2'120;   // in the place of a picture number: the picture did not arrive in time
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
        throw JsonError(value.place() + ": a camera has no parameter of that name; " +
                        knownNames(name, parameters.names()));
    const CameraStatus status = parameters.preset(name, valueFor(parameter->type, value));
    if (status == CameraStatus::Ok)
        return;
    std::string text = value.place() + ": " + cameraErrorTextOf(static_cast<int32_t>(status));
    if (parameter->type == ParameterType::Enumeration)
        text += "; " + knownNames(value.text(), {parameter->entries.begin(), parameter->entries.end()});
    throw JsonError(text);
}

/// In three passes, since each limits the next: what a host only reads, such as the sensor's size; what it
/// writes; the offsets.
void readParameters(const JsonValue& values, ParameterSheet& parameters)
{
    enum class Pass { ReadOnly, Writable, Offsets };
    const auto passOf = [&](const std::string& name) {
        const CameraParameter* const parameter = parameters.find(name);
        if (parameter && parameter->access == ParameterAccess::ReadOnly)
            return Pass::ReadOnly;
        return name.starts_with("Offset") ? Pass::Offsets : Pass::Writable;
    };
    for (const Pass pass : {Pass::ReadOnly, Pass::Writable, Pass::Offsets}) {
        values.object().eachMember([&](const std::string& name, const JsonValue& value) {
            if (passOf(name) == pass)
                presetParameter(parameters, name, value);
        });
        if (pass == Pass::ReadOnly)
            parameters.fitToSensor();
    }
}

/// The camera that a port has of which nothing more is said. The board's type settles the family.
CameraDescription standardCamera(int32_t boardType, size_t boardIndex, uint32_t port)
{
    const std::string place = std::to_string(boardIndex) + "-" + std::to_string(port);
    CameraDescription camera;
    camera.port = port;
    camera.family = &cameraFamilyOf(boardType);
    camera.parameters = ParameterSheet::standard(*camera.family);
    setText(camera.identity.vendor, camera.parameters.text("DeviceVendorName"));
    setText(camera.identity.model, camera.parameters.text("DeviceModelName"));
    setText(camera.identity.serial, "SIM-" + place);
    setText(camera.identity.name, "Camera " + place);
    presetIdentity(camera);
    return camera;
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
        camera.vanishAfterCalls = static_cast<uint64_t>(calls->integer(1, kMost));
    object.refuseOthers();
    return camera;
}

/// The cameras of a board, as the boards file lists them.
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

int64_t integerOr(int64_t otherwise, const std::optional<JsonValue>& value, int64_t least, int64_t most)
{
    return value ? value->integer(least, most) : otherwise;
}

PictureFaults faultsOf(JsonObject object)
{
    PictureFaults faults;
    faults.dropEvery = static_cast<uint64_t>(integerOr(0, object.find("dropEvery"), 0, kMost));
    faults.negativeEvery = static_cast<uint64_t>(integerOr(0, object.find("negativeEvery"), 0, kMost));
    faults.negativeNumber = integerOr(kAnyError, object.find("negativeNumber"), -kMost, -1);
    if (const auto jitter = object.find("jitterMilliseconds"))
        faults.jitter = std::chrono::duration_cast<std::chrono::nanoseconds>(
            std::chrono::duration<double, std::milli>(jitter->number(0, kLongestDelayMs)));
    faults.seed = static_cast<uint64_t>(integerOr(1, object.find("jitterSeed"), 0, kMost));
    object.refuseOthers();
    return faults;
}

BoardDescription& addBoard(BoardsFile& file, size_t index, int32_t type)
{
    BoardDescription& board = file.boards.at(index).emplace();
    board.type = type;
    setText(board.serial, "SIM-" + std::to_string(index));
    return board;
}

void readBoard(const JsonValue& entry, BoardsFile& file)
{
    JsonObject object = entry.object();
    const JsonValue place = object.need("index");
    const auto index = static_cast<size_t>(place.integer(0, BoardsFile::kMostBoards - 1));
    if (file.boards.at(index))
        place.refuse("must differ from that of every other board");
    BoardDescription& board =
        addBoard(file, index, static_cast<int32_t>(object.need("type").integer(0, kMost)));
    readText(object, "serial", board.serial);
    if (const auto cameras = object.find("cameras"))
        file.cameras.at(index) = readCameras(*cameras, board.type, index);
    if (const auto faults = object.find("faults"))
        board.faults = faultsOf(faults->object());
    object.refuseOthers();
}

BoardsFile::ScriptedCall scriptedCall(const JsonValue& entry)
{
    JsonObject object = entry.object();
    BoardsFile::ScriptedCall scripted;
    const JsonValue call = object.need("call");
    scripted.call = call.text();
    const std::string problem = Script::problemWith(scripted.call);
    if (!problem.empty())
        throw JsonError(call.place() + ": " + problem);
    scripted.nth = static_cast<uint32_t>(integerOr(1, object.find("nth"), 0, kMost));
    const auto answer = object.find("answer");
    const auto slow = object.find("slowMilliseconds");
    if (answer.has_value() == slow.has_value())
        entry.refuse(R"(must have either "answer" or "slowMilliseconds")");
    if (answer) {
        scripted.order.result = answer->integer(-kMost, kMost);
    } else {
        scripted.order.kind = Script::Order::Kind::Slow;
        scripted.order.delay =
            std::chrono::milliseconds(slow->integer(0, static_cast<int64_t>(kLongestDelayMs)));
    }
    object.refuseOthers();
    return scripted;
}

std::filesystem::path pathIn(const std::string& file, const std::optional<JsonValue>& value)
{
    return value ? pathBeside(file, *value) : std::filesystem::path();
}

}   // namespace

BoardsFile BoardsFile::builtIn()
{
    BoardsFile file;
    for (size_t index = 0; index < std::size(kCameraFamilies); ++index) {
        const CameraFamily& family = kCameraFamilies[index];
        addBoard(file, index, family.builtInBoard);
        for (uint32_t port = 0; port < family.ports; ++port)
            file.cameras.at(index).push_back(standardCamera(family.builtInBoard, index, port));
    }
    return file;
}

BoardsFile BoardsFile::read(const std::string& path)
{
    BoardsFile file;
    readJsonFile(path, [&](JsonObject& object) {
        object.need("boards").eachEntry([&](const JsonValue& entry) { readBoard(entry, file); });
        if (const auto calls = object.find("script"))
            calls->eachEntry([&](const JsonValue& entry) { file.script.push_back(scriptedCall(entry)); });
        file.ledgerPath = pathIn(path, object.find("ledger"));
        file.journalPath = pathIn(path, object.find("journal"));
        const auto quiet = object.find("quiet");
        file.isQuiet = quiet && quiet->boolean();
    });
    return file;
}

}   // namespace orvo::sim

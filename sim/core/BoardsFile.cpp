#include "sim/core/BoardsFile.h"

#include <algorithm>
#include <limits>

#include "sim/core/CameraReader.h"
#include "sim/json/JsonFile.h"

namespace orvo::sim {

namespace {

constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
constexpr double kLongestDelayMs = 3'600'000;
constexpr int32_t kGigEVisionBoard = 2'897, kGenICamBoard = 1'872;   // type codes
constexpr int64_t kAnyError =
    -2'120;   // in the place of a picture number: the picture did not arrive in time

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

/// `serial` is shorter than the field, and the NUL behind it is there already.
void setSerial(BoardDescription& board, const std::string& serial)
{
    std::fill(std::begin(board.serial), std::end(board.serial), '\0');
    std::copy(serial.begin(), serial.end(), board.serial);
}

BoardDescription& addBoard(BoardsFile& file, size_t index, int32_t type)
{
    BoardDescription& board = file.boards.at(index).emplace();
    board.type = type;
    setSerial(board, "SIM-" + std::to_string(index));
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
    if (const auto serial = object.find("serial")) {
        if (serial->text().size() >= sizeof board.serial)
            serial->refuse("must be shorter than " + std::to_string(sizeof board.serial) + " bytes");
        setSerial(board, serial->text());
    }
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
    scripted.call = object.need("call").text();
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

std::string pathOr(const std::optional<JsonValue>& value, const std::string& file)
{
    return value ? pathBeside(file, value->text()) : std::string();
}

}   // namespace

BoardsFile BoardsFile::builtIn()
{
    BoardsFile file;
    addBoard(file, 0, kGigEVisionBoard);
    addBoard(file, 1, kGenICamBoard);
    file.cameras[0] = {standardCamera(kGigEVisionBoard, 0, 0), standardCamera(kGigEVisionBoard, 0, 1)};
    file.cameras[1] = {standardCamera(kGenICamBoard, 1, 0)};
    return file;
}

BoardsFile BoardsFile::read(const std::string& path)
{
    BoardsFile file;
    readJsonFile(path, [&](JsonObject& object) {
        object.need("boards").eachEntry([&](const JsonValue& entry) { readBoard(entry, file); });
        if (const auto calls = object.find("script"))
            calls->eachEntry([&](const JsonValue& entry) { file.script.push_back(scriptedCall(entry)); });
        file.ledgerPath = pathOr(object.find("ledger"), path);
        file.journalPath = pathOr(object.find("journal"), path);
        const auto quiet = object.find("quiet");
        file.isQuiet = quiet && quiet->boolean();
    });
    return file;
}

}   // namespace orvo::sim

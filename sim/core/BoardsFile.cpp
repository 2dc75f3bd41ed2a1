#include "sim/core/BoardsFile.h"

#include <algorithm>
#include <limits>

#include "sim/json/JsonFile.h"

namespace orvo::sim
{

namespace
{

constexpr int64_t kMost = std::numeric_limits<int32_t>::max();
constexpr double kLongestDelayMs = 3'600'000;
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

void setSerial(BoardDescription& board, const std::string& serial)
{
    std::copy(serial.begin(), serial.end(), board.serial);
}

void readBoard(const JsonValue& entry, BoardsFile& file)
{
    JsonObject object = entry.object();
    const JsonValue index = object.need("index");
    auto& place = file.boards.at(static_cast<size_t>(index.integer(0, BoardsFile::kMostBoards - 1)));
    if (place)
        index.refuse("must differ from that of every other board");
    BoardDescription& board = place.emplace();
    board.type = static_cast<int32_t>(object.need("type").integer(0, kMost));
    setSerial(board, "SIM-" + std::to_string(&place - file.boards.data()));
    if (const auto serial = object.find("serial")) {
        if (serial->text().size() >= sizeof board.serial)
            serial->refuse("must be shorter than " + std::to_string(sizeof board.serial) + " bytes");
        std::fill(std::begin(board.serial), std::end(board.serial), '\0');
        setSerial(board, serial->text());
    }
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
        entry.refuse("must have either \"answer\" or \"slowMilliseconds\"");
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
    file.boards[0].emplace().type = 2897;   // GigE Vision
    file.boards[1].emplace().type = 1872;   // the other family
    setSerial(*file.boards[0], "SIM-0");
    setSerial(*file.boards[1], "SIM-1");
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

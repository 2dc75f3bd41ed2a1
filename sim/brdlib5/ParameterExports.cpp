#include <optional>
#include <span>
#include <string>
#include <vector>

#include "sim/brdlib5/Call.h"
#include "sim/brdlib5/MemoryHead.h"
#include "sim/brdlib5/Outcomes.h"
#include "sim/brdlib5/ParameterDescription.h"
#include "sim/brdlib5/brdlib5.h"

using namespace orvo::sim;

namespace {

/// For the journal, which must not fail with the call: nothing for what isn't known.
std::optional<ValueType> typeOf(const void* board, int32_t id)
{
    try {
        return Library::instance().board(board)->parameters().byId(id).type;
    } catch (const BrdError&) {
        return std::nullopt;
    }
}

std::optional<ValueType> knownType(int32_t code)
{
    try {
        return valueTypeOf(code);
    } catch (const BrdError&) {
        return std::nullopt;
    }
}

bool takesWord(const void* board, int32_t id)
{
    try {
        return Library::instance().board(board)->parameters().byId(id).takesWord;
    } catch (const BrdError&) {
        return false;
    }
}

void describeValue(CallText& words, std::optional<ValueType> type, const void* value)
{
    if (!value)
        words.word("value", "null");
    else if (type)
        words.word("value", valueSymbol(readValue(*type, value)));
    else
        words.word("value", "?");
}

void requireValue(const void* value)
{
    if (!value)
        throw BrdError(kNullArgument, "The value pointer is null");
}

int32_t readParameter(const void* board, int32_t id, void* value, uint32_t scope,
                      std::optional<int32_t> typeCode)
{
    requireValue(value);
    const auto owner = Library::instance().board(board);
    const Parameter& parameter = owner->parameters().byId(id);
    const int64_t word = parameter.takesWord ? std::get<int64_t>(readValue(ValueType::Int32, value)) : 0;
    writeValue(typeCode ? valueTypeOf(*typeCode) : parameter.type, parameter.get(scope, word), value);
    return 0;
}

int32_t writeParameter(const void* board, int32_t id, const void* value, uint32_t scope,
                       std::optional<int32_t> typeCode)
{
    requireValue(value);
    const auto owner = Library::instance().board(board);
    const ValueType type = typeCode ? valueTypeOf(*typeCode) : owner->parameters().byId(id).type;
    owner->parameters().set(id, scope, type, value);
    return 0;
}

int32_t readTimestamp(const void* board, void* value, uint32_t dma, const void* memoryHead,
                      int64_t imageNumber)
{
    requireValue(value);
    const auto owner = Library::instance().board(board);
    owner->dma(dma);
    const auto found = owner->head(memoryHead)->find(pictureOfImage(imageNumber));
    if (!found)
        throw BrdError(kUnknownPicture, "There is no image " + std::to_string(imageNumber));
    writeValue(ValueType::UInt64, found->timestamp, value);
    return 0;
}

int32_t readProperty(const void* board, int32_t id, int32_t property, std::optional<uint32_t> scope,
                     void* buffer, int32_t* length)
{
    const auto owner = Library::instance().board(board);
    handOut(owner->parameters().property(id, property, scope.value_or(owner->firstDma())), buffer, length);
    return 0;
}

}   // namespace

int32_t Brd_getParameterIdByName(void* board, const char* name)
{
    return exported<int32_t>(
        "Brd_getParameterIdByName", board,
        [&](CallText& words) { words.word("board", boardSymbol(board)).text("name", name); },
        [&] {
            requireValue(name);
            return Library::instance().board(board)->parameters().idOf(name);
        });
}

int32_t Brd_getParameter(void* board, int32_t id, void* value, uint32_t dma)
{
    const auto type = [&] { return typeOf(board, id); };
    return exported<int32_t>(
        "Brd_getParameter", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).number("id", id);
            if (takesWord(board, id))
                describeValue(words, type(), value);
            words.number("dma", dma);
        },
        [&] { return readParameter(board, id, value, dma, std::nullopt); },
        ValueOutcome(board, value, type()));
}

int32_t Brd_setParameter(void* board, int32_t id, const void* value, uint32_t dma)
{
    return exported<int32_t>(
        "Brd_setParameter", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).number("id", id);
            describeValue(words, typeOf(board, id), value);
            words.number("dma", dma);
        },
        [&] { return writeParameter(board, id, value, dma, std::nullopt); });
}

int32_t Brd_getParameterWithType(void* board, int32_t id, void* value, uint32_t dma, int32_t type)
{
    return exported<int32_t>(
        "Brd_getParameterWithType", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).number("id", id).number("dma", dma).number("type", type);
        },
        [&] { return readParameter(board, id, value, dma, type); },
        ValueOutcome(board, value, knownType(type)));
}

int32_t Brd_setParameterWithType(void* board, int32_t id, const void* value, uint32_t dma, int32_t type)
{
    return exported<int32_t>(
        "Brd_setParameterWithType", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).number("id", id);
            describeValue(words, knownType(type), value);
            words.number("dma", dma).number("type", type);
        },
        [&] { return writeParameter(board, id, value, dma, type); });
}

int32_t Brd_getParameterEx(void* board, int32_t id, void* value, uint32_t dma, void* memoryHead,
                           int64_t imageNumber)
{
    return exported<int32_t>(
        "Brd_getParameterEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board)).number("id", id).number("dma", dma);
            words.word("head", headSymbol(board, memoryHead)).number("imageNumber", imageNumber);
        },
        [&] {
            return id == built_in::kTimestamp.id ? readTimestamp(board, value, dma, memoryHead, imageNumber)
                                                 : readParameter(board, id, value, dma, std::nullopt);
        },
        ValueOutcome(board, value, id == built_in::kTimestamp.id ? ValueType::UInt64 : typeOf(board, id)));
}

int32_t Brd_getParameterProperty(void* board, int32_t id, int32_t property, void* buffer, int32_t* length)
{
    return exported<int32_t>(
        "Brd_getParameterProperty", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("id", id)
                .number("property", property)
                .pointer("buffer", buffer);
            if (buffer && length)
                words.number("length", *length);
        },
        [&] { return readProperty(board, id, property, std::nullopt, buffer, length); },
        BufferOutcome(board, buffer, length));
}

int32_t Brd_getParameterPropertyEx(void* board, int32_t id, int32_t property, uint32_t dma, void* buffer,
                                   int32_t* length)
{
    return exported<int32_t>(
        "Brd_getParameterPropertyEx", board,
        [&](CallText& words) {
            words.word("board", boardSymbol(board))
                .number("id", id)
                .number("property", property)
                .number("dma", dma);
            words.pointer("buffer", buffer);
            if (buffer && length)
                words.number("length", *length);
        },
        [&] { return readProperty(board, id, property, dma, buffer, length); },
        BufferOutcome(board, buffer, length));
}

#include <optional>
#include <string>

#include "sim/brdlib5/BoardCall.h"
#include "sim/brdlib5/Library.h"
#include "sim/brdlib5/ParameterDescription.h"
#include "sim/brdlib5/brdlib5.h"

using namespace orvo::sim;

namespace {

// For the journal, which must not fail with the call: nothing for what isn't known.

template <typename Ask>
auto orNothing(Ask ask) -> std::optional<decltype(ask())>
{
    try {
        return ask();
    } catch (const BrdError&) {
        return std::nullopt;
    }
}

/// The type of a board's parameter.
auto typeOf(const void* board, int32_t id)
{
    return [=] {
        return orNothing([&] { return Library::instance().board(board)->parameters().byId(id).type; });
    };
}

/// The type that a caller names.
auto typeOf(int32_t code)
{
    return [=] { return orNothing([&] { return valueTypeOf(code); }); };
}

bool takesWord(const void* board, int32_t id)
{
    const auto takes = [&] { return Library::instance().board(board)->parameters().byId(id).takesWord; };
    return orNothing(takes).value_or(false);
}

void requireValue(const void* value)
{
    if (!value)
        throw BrdError(kNullArgument, "The value pointer is null");
}

void readParameter(const void* board, int32_t id, void* value, uint32_t scope,
                   std::optional<int32_t> typeCode)
{
    requireValue(value);
    const auto owner = Library::instance().board(board);
    const Parameter& parameter = owner->parameters().byId(id);
    const int64_t word = parameter.takesWord ? std::get<int64_t>(readValue(ValueType::Int32, value)) : 0;
    writeValue(typeCode ? valueTypeOf(*typeCode) : parameter.type, parameter.get(scope, word), value);
}

void writeParameter(const void* board, int32_t id, const void* value, uint32_t scope,
                    std::optional<int32_t> typeCode)
{
    requireValue(value);
    const auto owner = Library::instance().board(board);
    const ValueType type = typeCode ? valueTypeOf(*typeCode) : owner->parameters().byId(id).type;
    owner->parameters().set(id, scope, type, value);
}

void readTimestamp(const void* board, void* value, uint32_t dma, const void* memoryHead, int64_t imageNumber)
{
    requireValue(value);
    const auto owner = Library::instance().board(board);
    owner->dma(dma);
    const auto found = owner->head(memoryHead)->find(pictureOfImage(imageNumber));
    if (!found)
        throw BrdError(kUnknownPicture, "There is no image " + std::to_string(imageNumber));
    writeValue(ValueType::UInt64, found->timestamp, value);
}

void readProperty(const void* board, int32_t id, int32_t property, std::optional<uint32_t> scope,
                  void* buffer, int32_t* length)
{
    const auto owner = Library::instance().board(board);
    handOut(owner->parameters().property(id, property, scope.value_or(owner->firstDma())), buffer, length);
}

}   // namespace

int32_t Brd_getParameterIdByName(void* board, const char* name)
{
    return boardCall(__func__, board, named("name", name)).run([&] {
        requireValue(name);
        return Library::instance().board(board)->parameters().idOf(name);
    });
}

int32_t Brd_getParameter(void* board, int32_t id, void* value, uint32_t dma)
{
    const auto wordArgument = [&](CallText& text) {
        if (takesWord(board, id))
            valueArgument(value, typeOf(board, id))(text);
    };
    return boardCall(__func__, board, named("id", id), wordArgument, named("dma", dma))
        .run([&] { readParameter(board, id, value, dma, std::nullopt); },
             ParameterOut(value, typeOf(board, id)));
}

int32_t Brd_setParameter(void* board, int32_t id, const void* value, uint32_t dma)
{
    return boardCall(__func__, board, named("id", id), valueArgument(value, typeOf(board, id)),
                     named("dma", dma))
        .run([&] { writeParameter(board, id, value, dma, std::nullopt); });
}

int32_t Brd_getParameterWithType(void* board, int32_t id, void* value, uint32_t dma, int32_t type)
{
    return boardCall(__func__, board, named("id", id), named("dma", dma), named("type", type))
        .run([&] { readParameter(board, id, value, dma, type); }, ParameterOut(value, typeOf(type)));
}

int32_t Brd_setParameterWithType(void* board, int32_t id, const void* value, uint32_t dma, int32_t type)
{
    return boardCall(__func__, board, named("id", id), valueArgument(value, typeOf(type)), named("dma", dma),
                     named("type", type))
        .run([&] { writeParameter(board, id, value, dma, type); });
}

int32_t Brd_getParameterEx(void* board, int32_t id, void* value, uint32_t dma, void* memoryHead,
                           int64_t imageNumber)
{
    const bool isTimestamp = id == built_in::kTimestamp.id;
    const auto body = [&] {
        if (isTimestamp)
            readTimestamp(board, value, dma, memoryHead, imageNumber);
        else
            readParameter(board, id, value, dma, std::nullopt);
    };
    const auto type = [&] { return isTimestamp ? ValueType::UInt64 : typeOf(board, id)(); };
    return boardCall(__func__, board, named("id", id), named("dma", dma), headArgument(board, memoryHead),
                     named("imageNumber", imageNumber))
        .run(body, ParameterOut(value, type));
}

int32_t Brd_getParameterProperty(void* board, int32_t id, int32_t property, void* buffer, int32_t* length)
{
    return boardCall(__func__, board, named("id", id), named("property", property),
                     bufferArgument(buffer, length))
        .run([&] { readProperty(board, id, property, std::nullopt, buffer, length); },
             BufferOut(buffer, length));
}

int32_t Brd_getParameterPropertyEx(void* board, int32_t id, int32_t property, uint32_t dma, void* buffer,
                                   int32_t* length)
{
    return boardCall(__func__, board, named("id", id), named("property", property), named("dma", dma),
                     bufferArgument(buffer, length))
        .run([&] { readProperty(board, id, property, dma, buffer, length); }, BufferOut(buffer, length));
}

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <optional>
#include <span>
#include <string>

#include "sim/brdlib5/BrdError.h"
#include "sim/brdlib5/Value.h"
#include "sim/call/Call.h"

namespace orvo::sim {

// How the journal shows handles and addresses of the board library: `?` for those that aren't known.
std::string boardSymbol(const void* handle);
std::string headSymbol(const void* board, const void* head);
std::string blockSymbol(const void* board, const void* head, const void* block);
/// A parameter's value; a text in double quotes.
std::string valueSymbol(const Value& value);

/// A failed call leaves its number and text as the last error of the board, or of the calls without one.
struct BoardFailure {
    const void* board;   // null: none

    int32_t numberOf(const std::exception& error) const;
    [[noreturn]] static void refuse(int32_t number);
};

/// A call of a function that names no open board.
template <typename... Arguments>
auto libraryCall(const char* function, Arguments... arguments)
{
    return Call(function, BoardFailure{nullptr}, arguments...);
}

/// A call of a function whose first argument is a board's handle.
template <typename... Arguments>
auto boardCall(const char* function, const void* board, Arguments... arguments)
{
    return Call(function, BoardFailure{board}, symbol("board", [=] { return boardSymbol(board); }),
                arguments...);
}

inline auto headArgument(const void* board, const void* head)
{
    return symbol("head", [=] { return headSymbol(board, head); });
}

/// A value behind a pointer. `typeOf()` answers its type, or nothing if that isn't known.
template <typename TypeOf>
auto valueArgument(const void* value, TypeOf typeOf)
{
    return symbol("value", [=]() -> std::string {
        if (!value)
            return CallText::kNull;
        const std::optional<ValueType> type = typeOf();
        return type ? valueSymbol(readValue(*type, value)) : CallText::kUnknown;
    });
}

/// A buffer to be filled, and its length word; with a null buffer that isn't read.
template <typename Length>
auto bufferArgument(const void* buffer, const Length* length)
{
    return [=](CallText& text) {
        setOrNull("buffer", buffer)(text);
        if (buffer && length)
            text.add("length", *length);
    };
}

/// A number behind a value pointer; `typeOf()` as above. A number of an unknown type isn't shown.
template <typename TypeOf>
struct ParameterOut {
    ParameterOut(void* pointer, TypeOf type) : value(pointer), typeOf(type) {}

    void take(const CallPass& pass) const
    {
        if (pass.bytes && value)
            std::memcpy(value, pass.bytes, pass.size);
    }
    void show(CallText& text, const CallPass&) const
    {
        const std::optional<ValueType> type = value ? typeOf() : std::nullopt;
        if (type && *type != ValueType::Text)
            text.addWord("value", valueSymbol(readValue(*type, value)));
    }

    void* value;
    TypeOf typeOf;
};

/// Fills a caller's buffer by the rules of length words: in the buffer's size, out the bytes delivered; a
/// null buffer asks for the length alone. Throws BrdError, and the buffer is left alone.
template <typename Length>
void handOut(std::span<const std::byte> bytes, void* buffer, Length* length)
{
    if (!length)
        throw BrdError(kNullArgument, "The length word is null");
    if (buffer && (*length < 0 || static_cast<size_t>(*length) < bytes.size()))
        throw BrdError(kBufferTooSmall,
                       "The buffer has less than " + std::to_string(bytes.size()) + " bytes");
    if (buffer)
        std::copy(bytes.begin(), bytes.end(), static_cast<std::byte*>(buffer));
    *length = static_cast<Length>(bytes.size());
}

/// A filled buffer.
template <typename Length>
struct BufferOut {
    BufferOut(void* memory, Length* word) : buffer(memory), length(word) {}

    void take(const CallPass& pass) const
    {
        if (pass.bytes)
            handOut({pass.bytes, pass.size}, buffer, length);
    }
    void show(CallText& out, const CallPass&) const
    {
        if (!length)
            return;
        out.add("length", *length);
        const auto* const text = static_cast<const char*>(buffer);
        // Bytes that are no text end elsewhere than at their first NUL.
        if (text && *length > 0 && std::memchr(text, 0, static_cast<size_t>(*length)) == text + *length - 1)
            out.add("buffer", text);
    }

    void* buffer;
    Length* length;
};

}   // namespace orvo::sim

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <span>

#include "sim/brdlib5/Call.h"
#include "sim/brdlib5/Symbols.h"

namespace orvo::sim {

/// A function that answers a handle or an address: `symbolOf(result)` is its name in the journal.
template <typename SymbolOf>
struct PointerOutcome : PlainOutcome<void*> {
    PointerOutcome(const void* handle, SymbolOf symbol) : PlainOutcome<void*>{handle}, symbolOf(symbol) {}
    void show(CallText& words, void* result) const { words.result(symbolOf(result)); }

    SymbolOf symbolOf;
};

/// A function that writes a number behind a value pointer. No type: what is written isn't shown.
struct ValueOutcome : PlainOutcome<int32_t> {
    ValueOutcome(const void* handle, void* pointer, std::optional<ValueType> valueType)
        : PlainOutcome<int32_t>{handle}, value(pointer), type(valueType)
    {}

    int32_t scripted(const CallPass& pass) const
    {
        if (pass.bytes && value)
            std::memcpy(value, pass.bytes, pass.size);
        return PlainOutcome::scripted(pass);
    }

    void show(CallText& words, int32_t result) const
    {
        PlainOutcome::show(words, result);
        if (result == 0 && value && type && *type != ValueType::Text)
            words.word("value", valueSymbol(readValue(*type, value)));
    }

    void* value;
    std::optional<ValueType> type;
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

/// A function that fills a buffer.
template <typename Length>
struct BufferOutcome : PlainOutcome<int32_t> {
    BufferOutcome(const void* handle, void* memory, Length* word)
        : PlainOutcome<int32_t>{handle}, buffer(memory), length(word)
    {}

    int32_t scripted(const CallPass& pass) const
    {
        try {
            if (pass.bytes)
                handOut({pass.bytes, pass.size}, buffer, length);
        } catch (const BrdError& error) {
            return failed<int32_t>(board, error.code(), error.what());
        }
        return PlainOutcome::scripted(pass);
    }

    void show(CallText& words, int32_t result) const
    {
        PlainOutcome::show(words, result);
        if (result != 0 || !length)
            return;
        words.number("length", *length);
        const auto* const text = static_cast<const char*>(buffer);
        // Bytes that are no text end elsewhere than at their first NUL.
        if (text && *length > 0 && std::memchr(text, 0, static_cast<size_t>(*length)) == text + *length - 1)
            words.text("buffer", text);
    }

    void* buffer;
    Length* length;
};

}   // namespace orvo::sim

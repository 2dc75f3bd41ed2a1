#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <exception>
#include <string>

#include "sim/call/CallText.h"
#include "sim/cameralib/Handles.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

/// A call that hands out nothing but its result.
struct NothingOut {
    void take(const CallPass&) const {}
    void show(CallText&) const {}
};

/// A call that writes a value behind a pointer. `show(words)` says in the journal what was written.
template <typename Value, typename Show>
struct ValueOut {
    ValueOut(Value* pointer, Show inWords) : value(pointer), showValue(inWords) {}

    void take(const CallPass& pass) const
    {
        if (pass.bytes && value)
            std::memcpy(value, pass.bytes, std::min(pass.size, sizeof *value));
    }
    void show(CallText& words) const
    {
        if (value)
            showValue(words);
    }

    Value* value;
    Show showValue;
};

/// A call that hands out the address of a text: the script's bytes are that text.
struct TextOut {
    void take(const CallPass& pass) const
    {
        if (pass.bytes && text)
            *text = reinterpret_cast<char*>(const_cast<std::byte*>(pass.bytes));   // a copy for good
    }
    void show(CallText& words) const
    {
        if (text)
            words.text("text", *text);
    }

    char** text;
};

/// The frame of every exported function: journal, script, and failures as the libraries report them.
/// `describe(CallText&)` writes the arguments, `body()` does the work, answers the result and may throw
/// CameraError; `out` is one of those above.
template <typename Describe, typename Body, typename Out = NothingOut>
int32_t cameraCall(const char* function, Describe describe, Body body, Out out = {})
{
    const auto guarded = [&]() -> int32_t {
        try {
            return body();
        } catch (const CameraError& error) {
            return static_cast<int32_t>(error.status());
        } catch (const std::exception&) {
            return static_cast<int32_t>(CameraStatus::InternalFault);
        }
    };
    CallRecorder& calls = orvo_sim_core()->calls();
    if (!calls.isWatching())
        return guarded();
    CallText arguments;
    describe(arguments);
    const CallPass pass = calls.enter(function, arguments.str());
    if (pass.answered)
        out.take(pass);
    const auto result = pass.answered ? static_cast<int32_t>(pass.result) : guarded();
    CallText rest;
    rest.result(std::to_string(result));
    if (result == 0 && (!pass.answered || pass.bytes))
        out.show(rest);
    calls.leave(pass, rest.str());
    return result;
}

inline CallText& describeLibrary(CallText& words, uint64_t library)
{
    return words.word("library", Handles::instance().librarySymbol(library));
}

inline CallText& describeCamera(CallText& words, uint64_t camera)
{
    return words.word("camera", Handles::instance().cameraSymbol(camera));
}

}   // namespace orvo::sim

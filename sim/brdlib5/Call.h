#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <string_view>
#include <type_traits>

#include "sim/brdlib5/BrdError.h"
#include "sim/brdlib5/Library.h"
#include "sim/call/CallText.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

/// What an exported function fails with: its error number, or null.
template <typename Result>
Result failed(const void* board, int32_t number, std::string_view text)
{
    Library::instance().setLastError(board, number, text);
    if constexpr (std::is_pointer_v<Result>)
        return nullptr;
    else
        return number;
}

/// The outcome of most functions: a number, or a text that the library owns.
template <typename Result>
struct PlainOutcome {
    const void* board;

    /// The script's answer in the place of the function's own.
    Result scripted(const CallPass& pass) const
    {
        if constexpr (!std::is_pointer_v<Result>)
            return static_cast<Result>(pass.result);
        else if (pass.bytes)
            return reinterpret_cast<Result>(const_cast<std::byte*>(pass.bytes));   // a copy for good
        else
            return failed<Result>(board, static_cast<int32_t>(pass.result),
                                  "The script wants this call to fail");
    }

    void show(CallText& words, Result result) const
    {
        if constexpr (std::is_pointer_v<Result>)
            words.result(CallText::quoted(result));
        else
            words.result(std::to_string(result));
    }
};

/// The frame of every exported function: journal, script, and failures as the library reports them.
/// `describe(CallText&)` writes the arguments, `body()` does the work and may throw BrdError, `outcome` is
/// PlainOutcome or has its two operations.
template <typename Result, typename Describe, typename Body, typename Outcome>
Result exported(const char* function, const void* board, Describe describe, Body body, Outcome outcome)
{
    const auto guarded = [&]() -> Result {
        try {
            return body();
        } catch (const BrdError& error) {
            return failed<Result>(board, error.code(), error.what());
        } catch (const std::exception& error) {
            return failed<Result>(board, kInternalFault, error.what());
        }
    };
    CallRecorder& calls = orvo_sim_core()->calls();
    if (!calls.isWatching())
        return guarded();
    CallText arguments;
    describe(arguments);
    const CallPass pass = calls.enter(function, arguments.str());
    const Result result = pass.answered ? outcome.scripted(pass) : guarded();
    CallText rest;
    outcome.show(rest, result);
    calls.leave(pass, rest.str());
    return result;
}

template <typename Result, typename Describe, typename Body>
Result exported(const char* function, const void* board, Describe describe, Body body)
{
    return exported<Result>(function, board, describe, body, PlainOutcome<Result>{board});
}

}   // namespace orvo::sim

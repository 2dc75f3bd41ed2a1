#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <string>
#include <tuple>
#include <type_traits>

#include "sim/call/CallText.h"
#include "sim/seam/Core.h"

namespace orvo::sim {

// Arguments: callables that write themselves into a CallText, under the names of the prototype. They run only
// while the journal or the script want calls.

/// A number or a text.
template <typename Value>
auto named(const char* name, Value value)
{
    return [=](CallText& text) { text.add(name, value); };
}

/// A handle or an address: `symbolOf()` answers its symbol.
template <typename SymbolOf>
auto symbol(const char* name, SymbolOf symbolOf)
{
    return [=](CallText& text) { text.addWord(name, symbolOf()); };
}

/// A pointer that the journal shows as `set` or `null`.
inline auto setOrNull(const char* name, const void* pointer)
{
    return [=](CallText& text) { text.addWord(name, CallText::setOrNull(pointer)); };
}

// What a call hands out besides its result. `take(pass)` does what remains to be done when the script answers
// the call, such as handing out the script's bytes. `show(text, pass)` writes to the journal what was handed
// out; it is called if the result is 0. `resultText(result)` is optional: the result as the journal has it.

struct NothingOut {
    void take(const CallPass&) const {}
    void show(CallText&, const CallPass&) const {}
};

/// Of a function that returns an address.
template <typename SymbolOf>
struct AddressOut : NothingOut {
    explicit AddressOut(SymbolOf symbol) : symbolOf(symbol) {}
    std::string resultText(const void* address) const { return symbolOf(address); }

    SymbolOf symbolOf;
};

/// The result of a function that returns nothing.
struct NoResult {};

/// The frame of every exported function: journal, script, and failures as the library reports them.
/// `Failure` says how: `numberOf(exception)` answers the number that a status function returns for it, and
/// `refuse(number)` throws what makes a function fail with that number.
template <typename Failure, typename... Arguments>
class Call {
public:
    explicit Call(const char* function, Failure failure, Arguments... arguments)
        : m_function(function), m_failure(failure), m_arguments(arguments...)
    {}

    /// `body()` does the work and answers the result; one that answers nothing has succeeded: 0. Whatever it
    /// throws makes the call fail: a number, or null.
    template <typename Body, typename Out = NothingOut>
    auto run(const Body& body, const Out& out = {}) const
    {
        using Answer = std::invoke_result_t<Body>;
        using Result = std::conditional_t<std::is_void_v<Answer>, int32_t, Answer>;
        CallRecorder& calls = orvo_sim_core()->calls();
        if (!calls.isWatching())
            return guarded<Result>(body);
        CallText arguments;
        std::apply([&](const auto&... argument) { (argument(arguments), ...); }, m_arguments);
        const CallPass pass = calls.enter(m_function, arguments.str());
        const auto scripted = [&] {
            out.take(pass);
            return answerOf<Result>(pass);
        };
        const Result result = pass.answered ? guarded<Result>(scripted) : guarded<Result>(body);
        calls.leave(pass, restOf(result, out, pass).str());
        return result;
    }

private:
    template <typename Result, typename Body>
    Result guarded(const Body& body) const
    {
        try {
            if constexpr (std::is_void_v<std::invoke_result_t<Body>>)
                body();
            else
                return body();
        } catch (const std::exception& error) {
            [[maybe_unused]] const int32_t number = m_failure.numberOf(error);
            if constexpr (std::is_integral_v<Result>)
                return number;
        }
        return {};
    }

    template <typename Result>
    Result answerOf(const CallPass& pass) const
    {
        if constexpr (std::is_integral_v<Result>)
            return static_cast<Result>(pass.result);
        else if constexpr (std::is_pointer_v<Result>) {
            if (!pass.bytes)
                m_failure.refuse(static_cast<int32_t>(pass.result));
            return reinterpret_cast<Result>(const_cast<std::byte*>(pass.bytes));   // a copy for good
        } else
            return {};
    }

    template <typename Result, typename Out>
    static CallText restOf(Result result, const Out& out, const CallPass& pass)
    {
        CallText rest;
        if constexpr (requires { out.resultText(result); })
            rest.addResult(out.resultText(result));
        else if constexpr (std::is_pointer_v<Result>)
            rest.addResult(CallText::quoted(result));
        else if constexpr (std::is_integral_v<Result>) {
            rest.addResult(std::to_string(result));
            if (result == 0)
                out.show(rest, pass);
        }
        return rest;
    }

    const char* const m_function;
    const Failure m_failure;
    const std::tuple<Arguments...> m_arguments;
};

}   // namespace orvo::sim

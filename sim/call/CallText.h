#pragma once

#include <concepts>
#include <string>
#include <string_view>

namespace orvo::sim {

/// One side of a call as the journal has it: the arguments by name, or the result and what is handed out.
class CallText {
public:
    template <std::integral Number>
    void add(std::string_view name, Number value)
    {
        addWord(name, std::to_string(value));
    }
    /// Decimal, in the classic locale, with as many digits as tell it from every other.
    void add(std::string_view name, double value);
    /// In double quotes; null is `null`.
    void add(std::string_view name, const char* text);
    /// As it is: the symbol of a handle or an address.
    void addWord(std::string_view name, std::string_view word);

    /// " -> " and the result, which comes before everything that is handed out.
    void addResult(std::string_view result);

    const std::string& str() const { return m_text; }

    static std::string quoted(const char* text);
    static const char* setOrNull(const void* pointer) { return pointer ? "set" : kNull; }

    // The symbols of every library.
    static constexpr const char* kUnknown = "?";
    static constexpr const char* kNull = "null";

private:
    std::string m_text;
};

}   // namespace orvo::sim

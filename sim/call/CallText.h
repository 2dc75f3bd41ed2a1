#pragma once

#include <concepts>
#include <string>
#include <string_view>

namespace orvo::sim {

/// A call in the words of the journal: arguments by name, or the result and what is handed out.
class CallText {
public:
    template <std::integral Number>
    CallText& number(std::string_view name, Number value)
    {
        return word(name, std::to_string(value));
    }
    /// Decimal, in the classic locale, with as many digits as tell it from every other.
    CallText& real(std::string_view name, double value);
    /// In double quotes; null is `null`.
    CallText& text(std::string_view name, const char* value);
    /// `set` or `null`.
    CallText& pointer(std::string_view name, const void* value);
    /// As it is: a symbol that stands for a handle or an address.
    CallText& word(std::string_view name, std::string_view value);

    /// " -> " and the result, which comes before everything that is handed out.
    CallText& result(std::string_view value);

    const std::string& str() const { return m_text; }

    static std::string quoted(const char* text);

    // The symbols of every library.
    static constexpr const char* kUnknown = "?";
    static constexpr const char* kNull = "null";

private:
    std::string m_text;
};

}   // namespace orvo::sim

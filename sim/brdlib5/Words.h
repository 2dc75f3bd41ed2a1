#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>

#include "sim/brdlib5/Value.h"

namespace orvo::sim {

/// A call in the words of the journal: arguments by name, or the result and what is handed out.
class Words {
public:
    template <std::integral Number>
    Words& number(std::string_view name, Number value)
    {
        return word(name, std::to_string(value));
    }
    /// In double quotes; null is `null`.
    Words& text(std::string_view name, const char* value);
    /// `set` or `null`.
    Words& pointer(std::string_view name, const void* value);
    Words& value(std::string_view name, const Value& value);
    Words& word(std::string_view name, std::string_view value);

    // Symbols for handles and addresses, `?` for those that aren't known.
    Words& board(const void* handle) { return word("board", boardSymbol(handle)); }
    Words& head(const void* board, const void* head) { return word("head", headSymbol(board, head)); }

    /// " -> " and the result, which comes before everything that is handed out.
    Words& result(std::string_view value);

    const std::string& str() const { return m_text; }

    static std::string quoted(const char* text);
    static std::string boardSymbol(const void* handle);
    static std::string headSymbol(const void* board, const void* head);
    static std::string blockSymbol(const void* board, const void* head, const void* block);

private:
    std::string m_text;
};

}   // namespace orvo::sim

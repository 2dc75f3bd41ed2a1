#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvo::sim {

/// Chooses calls by the function's name and any of their arguments: "Brd_getParameter id=3080 dma=0".
class CallPattern {
public:
    explicit CallPattern(std::string_view text);

    const std::string& text() const { return m_text; }
    bool matches(std::string_view function, std::string_view arguments) const;

private:
    std::string m_text;
    std::vector<std::string> m_words;   // the name first; empty if the text is
};

/// Chooses lines of the journal by the function's name: "Brd_AddMem Brd_get* -Brd_getStatusEx".
class FunctionFilter {
public:
    explicit FunctionFilter(std::string_view text);

    bool keeps(std::string_view function) const;

private:
    std::vector<std::string> m_kept;   // none: all
    std::vector<std::string> m_dropped;
};

}   // namespace orvo::sim

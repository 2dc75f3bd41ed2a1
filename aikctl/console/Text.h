#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Texts for people and programs. What boards and libraries say is bytes, and need not be UTF-8.
namespace orvo::aikctl {

/// The same text in UTF-8: a byte that belongs to no character is shown as "\xE4".
std::string readable(std::string_view text);

/// How many characters the text has; a terminal shows each in a column of its own. `text` is UTF-8.
size_t characterCount(std::string_view text);

/// At most so many characters of the text; the last one is "…" if more were there. `text` is UTF-8.
std::string cut(const std::string& text, size_t characters);

}   // namespace orvo::aikctl

#include "aikctl/console/Text.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace orvo::aikctl {

namespace {

/// The bytes of well-formed characters, by their first.
struct CharacterRow {
    unsigned char firstLow, firstHigh;
    size_t length;
    unsigned char secondLow, secondHigh;   // narrower for some; any other byte is 0x80 to 0xBF
};

constexpr CharacterRow kCharacters[] = {
    {0x00, 0x7F, 1, 0x00, 0x00}, {0xC2, 0xDF, 2, 0x80, 0xBF}, {0xE0, 0xE0, 3, 0xA0, 0xBF},
    {0xE1, 0xEC, 3, 0x80, 0xBF}, {0xED, 0xED, 3, 0x80, 0x9F}, {0xEE, 0xEF, 3, 0x80, 0xBF},
    {0xF0, 0xF0, 4, 0x90, 0xBF}, {0xF1, 0xF3, 4, 0x80, 0xBF}, {0xF4, 0xF4, 4, 0x80, 0x8F},
};

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80;
}

/// The length in bytes of the character that the text begins with; 0 if it begins with none.
size_t firstCharacterLength(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.front());
    const auto* const row = std::ranges::find_if(
        kCharacters, [&](const auto& known) { return first >= known.firstLow && first <= known.firstHigh; });
    if (row == std::end(kCharacters) || text.size() < row->length)
        return 0;
    if (row->length == 1)
        return 1;
    const auto second = static_cast<unsigned char>(text[1]);
    const bool isWhole = second >= row->secondLow && second <= row->secondHigh &&
                         std::ranges::all_of(text.substr(1, row->length - 1), isContinuation);
    return isWhole ? row->length : 0;
}

}   // namespace

std::string readable(std::string_view text)
{
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string shown;
    while (!text.empty()) {
        const size_t length = firstCharacterLength(text);
        const auto byte = static_cast<unsigned char>(text.front());
        if (length == 0)
            shown.append("\\x").append({kDigits[byte / 16], kDigits[byte % 16]});
        shown.append(text.substr(0, length));
        text.remove_prefix(std::max<size_t>(length, 1));
    }
    return shown;
}

size_t characterCount(std::string_view text)
{
    return text.size() - static_cast<size_t>(std::ranges::count_if(text, isContinuation));
}

std::string cut(const std::string& text, size_t characters)
{
    if (characterCount(text) <= characters)
        return text;
    size_t end = 0;
    for (size_t kept = 0; end < text.size(); ++end)
        if (!isContinuation(text[end]) && ++kept >= std::max<size_t>(characters, 1))
            break;
    return text.substr(0, end) + "…";
}

}   // namespace orvo::aikctl

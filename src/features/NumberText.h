#pragma once

#include <cstdint>
#include <locale>
#include <optional>
#include <sstream>
#include <string>

namespace orvo::cognex {

/// The number in decimal.
std::string toText(uint64_t number);
std::string toText(int64_t number);

/// The number at the beginning of `text`, by the rules of a standard stream: leading white space is skipped
/// and what follows the number is ignored. None if there is no number or it doesn't fit `T`.
template <typename T>
std::optional<T> parseNumber(const char* text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    T number{};
    stream >> number;
    return stream.fail() ? std::nullopt : std::optional<T>(number);
}

/// The number as a standard stream in its default state writes it: six significant digits for a float.
template <typename T>
std::string formatNumber(T number)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << number;
    return stream.str();
}

/// Throws std::runtime_error "Cannot parse char array to number value" where parseNumber() finds none.
template <typename T>
T parseOrThrow(const char* text);

/// parseOrThrow() of a 32-bit signed number, which is what the board library's texts hold.
int32_t parseInt(const char* text);

}   // namespace orvo::cognex

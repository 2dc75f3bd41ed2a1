#include "features/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <type_traits>

namespace orvo::cognex {

namespace {

constexpr std::string_view kWhiteSpace = " \t\n\v\f\r";
constexpr std::string_view kExponentMarks = "eE";
constexpr int kSignificantDigits = 6;

bool takePrefix(std::string_view& text, char prefix)
{
    const bool found = text.starts_with(prefix);
    text.remove_prefix(found ? 1 : 0);
    return found;
}

/// Which end of the range a positive number is beyond, given that it is out of range.
bool isTooSmall(std::string_view number)
{
    const size_t mark = std::min(number.find_first_of(kExponentMarks), number.size());
    const std::string_view digits = number.substr(0, mark);
    const auto point = static_cast<int64_t>(std::min(digits.find('.'), digits.size()));
    const auto firstNonZero = static_cast<int64_t>(digits.find_first_of("123456789"));
    int64_t exponent = 0;
    if (mark < number.size()) {
        std::string_view text = number.substr(mark + 1);
        takePrefix(text, '+');
        if (std::from_chars(text.data(), text.data() + text.size(), exponent).ec != std::errc())
            return text.starts_with('-');   // beyond 64 bits, so that the digits no longer matter
    }
    return exponent < firstNonZero - point;
}

/// A float by std::from_chars: a stream would switch the C library's locale, and with it the whole process's,
/// for the length of the call.
std::optional<double> parseFloat(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    const bool negative = !takePrefix(text, '+') && takePrefix(text, '-');
    const bool isDecimal = text.find_first_of(".0123456789") == 0;   // and neither a second sign nor a name
    if (!isDecimal || text.starts_with("0x") || text.starts_with("0X"))
        return std::nullopt;

    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error == std::errc::invalid_argument)
        return std::nullopt;
    const std::string_view number = text.substr(0, static_cast<size_t>(end - text.data()));
    const bool hasExponent = number.find_first_of(kExponentMarks) != std::string_view::npos;
    if (!hasExponent && text.find_first_of(kExponentMarks, number.size()) == number.size())
        return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        if (!isTooSmall(number))
            return std::nullopt;
        value = 0;
    }
    return negative ? -value : value;
}

std::string formatFloat(double number)
{
    if (std::isnan(number))
        return "nan";   // whatever its sign
    std::array<char, 32> text{};
    const auto written = std::to_chars(text.data(), text.data() + text.size(), number,
                                       std::chars_format::general, kSignificantDigits);
    return {text.data(), written.ptr};
}

}   // namespace

template <typename T>
std::optional<T> parseNumber(const char* text)
{
    if constexpr (std::is_floating_point_v<T>) {
        return parseFloat(text);
    } else {
        std::istringstream stream(text);
        stream.imbue(std::locale::classic());
        T number{};
        stream >> number;
        return stream.fail() ? std::nullopt : std::optional<T>(number);
    }
}

template <typename T>
std::string formatNumber(T number)
{
    if constexpr (std::is_floating_point_v<T>)
        return formatFloat(number);
    else
        return std::to_string(number);
}

template <typename T>
T parseOrThrow(const char* text)
{
    const std::optional<T> number = parseNumber<T>(text);
    if (!number)
        throw std::runtime_error("Cannot parse char array to number value");
    return *number;
}

// clang-format off
template std::optional<int> parseNumber(const char*);
template std::optional<unsigned int> parseNumber(const char*);
template std::optional<long> parseNumber(const char*);
template std::optional<unsigned long> parseNumber(const char*);
template std::optional<long long> parseNumber(const char*);
template std::optional<unsigned long long> parseNumber(const char*);
template std::optional<double> parseNumber(const char*);
template std::string formatNumber(int);
template std::string formatNumber(unsigned int);
template std::string formatNumber(long);
template std::string formatNumber(unsigned long);
template std::string formatNumber(long long);
template std::string formatNumber(unsigned long long);
template std::string formatNumber(double);
template int32_t parseOrThrow(const char*);
template uint32_t parseOrThrow(const char*);
template int64_t parseOrThrow(const char*);
template uint64_t parseOrThrow(const char*);
template double parseOrThrow(const char*);
// clang-format on

int32_t parseInt(const char* text)
{
    return parseOrThrow<int32_t>(text);
}

std::string toText(uint64_t number)
{
    return formatNumber(number);
}

std::string toText(int64_t number)
{
    return formatNumber(number);
}

}   // namespace orvo::cognex

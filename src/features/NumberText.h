#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace orvo::cognex {

// Numbers as text, always in the classic form: neither the host's C++ locale nor that of the C library plays a
// part, and neither is touched. `T` is double or one of the standard integers from int upwards.

/// The number at the beginning of `text`, none if there is none or it doesn't fit `T`. Leading white space and
/// one plus sign are skipped, and what follows the number is ignored. A double that is too small is 0; an
/// exponent mark without digits, "inf", "nan" and hexadecimal are no numbers.
template <typename T>
std::optional<T> parseNumber(const char* text);

/// The number in decimal; a double with six significant digits: "0.123457", "1e+06", "inf", "-inf", "nan".
template <typename T>
std::string formatNumber(T number);

/// Throws std::runtime_error "Cannot parse char array to number value" where parseNumber() finds none.
template <typename T>
T parseOrThrow(const char* text);

/// parseOrThrow() of a 32-bit signed number, the form of the board library's texts.
int32_t parseInt(const char* text);

/// The number in decimal.
std::string toText(uint64_t number);
std::string toText(int64_t number);

}   // namespace orvo::cognex

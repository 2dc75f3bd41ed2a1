#include "sim/brdlib5/Value.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>

#include "sim/brdlib5/BrdError.h"

namespace orvo::sim {

namespace {

template <typename T>
T loaded(const void* at)
{
    T value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

template <typename T>
void store(T value, void* at)
{
    std::memcpy(at, &value, sizeof value);
}

[[noreturn]] void refuse(BrdCode code, const Value& value, const char* problem)
{
    throw BrdError(code, "\"" + textOf(value) + "\" " + problem);
}

template <typename Integer>
constexpr int kDigits = std::numeric_limits<Integer>::digits;

template <typename Integer>
Integer toInteger(const Value& value)
{
    return std::visit(
        [&](const auto& held) -> Integer {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_same_v<Held, std::string>) {
                refuse(kWrongType, value, "is a text and no number");
            } else if constexpr (std::is_same_v<Held, double>) {
                // Powers of two, which a double holds exactly: the limits of the type, the upper one outside.
                const double least = std::is_signed_v<Integer> ? -std::ldexp(1, kDigits<Integer>) : 0;
                const double beyond = std::ldexp(1, kDigits<Integer>);
                if (held != std::floor(held) || held < least || held >= beyond)
                    refuse(kWrongType, value, "is no integer of the parameter's type");
                return static_cast<Integer>(held);
            } else {
                if (!std::in_range<Integer>(held))
                    refuse(kOutOfRange, value, "is out of the range of the type");
                return static_cast<Integer>(held);
            }
        },
        value);
}

double toDouble(const Value& value)
{
    if (const auto* number = std::get_if<double>(&value))
        return *number;
    if (const auto* number = std::get_if<uint64_t>(&value))
        return static_cast<double>(*number);
    return static_cast<double>(toInteger<int64_t>(value));
}

}   // namespace

ValueType valueTypeOf(int32_t code)
{
    if (code < static_cast<int32_t>(ValueType::Int32) || code > static_cast<int32_t>(ValueType::Wide))
        throw BrdError(kUnknownCode, "There is no data type " + std::to_string(code));
    return static_cast<ValueType>(code);
}

Value readValue(ValueType type, const void* at)
{
    switch (type) {
    case ValueType::Int32:
        return int64_t{loaded<int32_t>(at)};
    case ValueType::UInt32:
        return uint64_t{loaded<uint32_t>(at)};
    case ValueType::Int64:
        return loaded<int64_t>(at);
    case ValueType::UInt64:
    case ValueType::Wide:
        return loaded<uint64_t>(at);
    case ValueType::Double:
        return loaded<double>(at);
    case ValueType::Text:
        break;
    }
    return std::string(static_cast<const char*>(at));
}

void writeValue(ValueType type, const Value& value, void* at)
{
    switch (type) {
    case ValueType::Int32:
        return store(toInteger<int32_t>(value), at);
    case ValueType::UInt32:
        return store(toInteger<uint32_t>(value), at);
    case ValueType::Int64:
        return store(toInteger<int64_t>(value), at);
    case ValueType::UInt64:
    case ValueType::Wide:
        return store(toInteger<uint64_t>(value), at);
    case ValueType::Double:
        return store(toDouble(value), at);
    case ValueType::Text:
        throw BrdError(kWrongType, "A text is read through property 0");
    }
}

Value converted(const Value& value, ValueType type)
{
    switch (type) {
    case ValueType::Int32:
        return int64_t{toInteger<int32_t>(value)};
    case ValueType::UInt32:
        return uint64_t{toInteger<uint32_t>(value)};
    case ValueType::Int64:
        return toInteger<int64_t>(value);
    case ValueType::UInt64:
    case ValueType::Wide:
        return toInteger<uint64_t>(value);
    case ValueType::Double:
        return toDouble(value);
    case ValueType::Text:
        break;
    }
    if (!std::holds_alternative<std::string>(value))
        refuse(kWrongType, value, "is a number and no text");
    return value;
}

std::string textOf(const Value& value)
{
    if (const auto* text = std::get_if<std::string>(&value))
        return *text;
    std::array<char, 32> digits{};
    char* const end = std::visit(
        [&](const auto& held) {
            if constexpr (std::is_arithmetic_v<std::decay_t<decltype(held)>>)
                return std::to_chars(digits.data(), digits.data() + digits.size(), held).ptr;
            else
                return digits.data();
        },
        value);
    return {digits.data(), end};
}

}   // namespace orvo::sim

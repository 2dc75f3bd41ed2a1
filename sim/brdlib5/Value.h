#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <variant>

namespace orvo::sim {

/// The library's data types of parameters, by the codes of property 1 and of the typed calls.
enum class ValueType : int32_t {
    Int32 = 1,
    UInt32 = 2,
    Int64 = 3,
    UInt64 = 4,
    Double = 5,
    Text = 6,
    Wide = 7
};

using Value = std::variant<int64_t, uint64_t, double, std::string>;

/// Throws BrdError for a code that isn't one.
ValueType valueTypeOf(int32_t code);

/// The value of that type at an address; a text is at the address itself.
Value readValue(ValueType type, const void* at);
/// Writes the value in the width of the type. Throws BrdError for texts, which have no width, and for a value
/// that doesn't fit.
void writeValue(ValueType type, const Value& value, void* at);

/// The same number in the form that the type has. A whole double becomes an integer where one is wanted.
/// Throws BrdError for what doesn't fit.
Value converted(const Value& value, ValueType type);

/// As property 0 has it: decimal, in the classic locale.
std::string textOf(const Value& value);

}   // namespace orvo::sim

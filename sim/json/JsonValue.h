#pragma once

#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include <nlohmann/json_fwd.hpp>

namespace orvo::sim {

class JsonObject;

/// A description that can't be used. The text says what is wrong and where, for the person who wrote it.
class JsonError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// One value of a JSON text together with its place in it, so that whatever is wrong with the value can be
/// said with the place. Refers to the text, which must outlive it. All readers throw JsonError.
class JsonValue {
public:
    /// `place` as a person would write it: "boards[1].faults.dropEvery", empty for the whole text.
    JsonValue(const nlohmann::json& value, std::string place);

    const std::string& place() const { return m_place; }
    bool isInteger() const;
    bool isText() const;
    bool isNull() const;
    bool isObject() const;

    bool boolean() const;
    int64_t integer(int64_t least, int64_t most) const;
    uint64_t natural(uint64_t most) const;
    double number(double least, double most) const;
    const std::string& text() const;
    JsonObject object() const;
    /// Calls `visit` for each entry of a list, in order. Returns their number.
    size_t eachEntry(const std::function<void(const JsonValue&)>& visit) const;

    /// Throws what a person reads: the place, then the problem, which continues the sentence "... must be".
    [[noreturn]] void refuse(std::string_view problem) const;

private:
    const nlohmann::json* m_value;
    std::string m_place;
};

}   // namespace orvo::sim

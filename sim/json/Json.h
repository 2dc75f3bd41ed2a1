#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

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

/// The members of one object, taken by key. A member that was not taken is a mistake in the file, and
/// refuseOthers() says so: a misspelled key must not pass for a default.
class JsonObject {
public:
    JsonObject(const nlohmann::json& value, std::string place);

    /// The member of that key, or nothing.
    std::optional<JsonValue> find(std::string_view key);
    /// The member of that key. Throws JsonError if there is none.
    JsonValue need(std::string_view key);
    /// Calls `visit` with key and value of each member, in the order of the keys: for objects whose keys are
    /// the person's own.
    void eachMember(const std::function<void(const std::string&, const JsonValue&)>& visit);
    /// Throws JsonError for the first member whose key was never asked for. Call it last.
    void refuseOthers() const;

private:
    std::string placeOf(std::string_view key) const;

    const nlohmann::json* m_value;
    std::string m_place;
    std::vector<std::string> m_known;   // in the order of asking
};

/// Reads the file at `path`, in the process's code page, and hands it to `read`. It must hold one JSON object in
/// UTF-8, without members that `read` didn't ask for. Comments in the manner of C are allowed. Throws JsonError, its text beginning
/// with the path: for a file that can't be read, for a syntax error with line and column, for a key that
/// appears twice in one object, and for whatever `read` throws as JsonError.
void readJsonFile(const std::string& path, const std::function<void(JsonObject&)>& read);

/// The end of a sentence that refuses `wanted`: all names that are known, or the nearest of them if they are
/// many.
std::string knownNames(std::string_view wanted, const std::vector<std::string_view>& names);

/// The path that stands in the file at `file`: a relative one starts from that file's folder. `file` is in the
/// process's code page, what stands in it in UTF-8.
std::filesystem::path pathBeside(const std::string& file, const JsonValue& path);

}   // namespace orvo::sim

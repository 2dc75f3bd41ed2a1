#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/json/JsonValue.h"

namespace orvo::sim {

/// The members of one object, taken by key. What nobody took is a mistake of the person who wrote it, and
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

}   // namespace orvo::sim

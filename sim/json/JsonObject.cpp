#include "sim/json/JsonObject.h"

#include <algorithm>
#include <utility>

#include <nlohmann/json.hpp>

namespace orvo::sim {

JsonObject::JsonObject(const nlohmann::json& value, std::string place)
    : m_value(&value), m_place(std::move(place))
{}

std::optional<JsonValue> JsonObject::find(std::string_view key)
{
    m_known.emplace_back(key);
    const auto member = m_value->find(key);
    if (member == m_value->end())
        return std::nullopt;
    return JsonValue(*member, placeOf(key));
}

JsonValue JsonObject::need(std::string_view key)
{
    if (auto member = find(key))
        return *member;
    throw JsonError(placeOf(key) + ": is missing");
}

void JsonObject::eachMember(const std::function<void(const std::string&, const JsonValue&)>& visit)
{
    for (const auto& [key, value] : m_value->items()) {
        m_known.push_back(key);
        visit(key, JsonValue(value, placeOf(key)));
    }
}

void JsonObject::refuseOthers() const
{
    for (const auto& member : m_value->items()) {
        if (std::find(m_known.begin(), m_known.end(), member.key()) != m_known.end())
            continue;
        std::string text = placeOf(member.key()) + ": is not known here; known are ";
        for (size_t i = 0; i < m_known.size(); ++i)
            text += (i ? ", " : "") + m_known[i];
        throw JsonError(text);
    }
}

std::string JsonObject::placeOf(std::string_view key) const
{
    return (m_place.empty() ? "" : m_place + ".") + std::string(key);
}

}   // namespace orvo::sim

#include "sim/json/JsonValue.h"

#include <sstream>
#include <utility>

#include <nlohmann/json.hpp>

#include "sim/json/JsonObject.h"

namespace orvo::sim {

namespace {

constexpr size_t kLongestQuote = 40;

std::string quoted(const nlohmann::json& value)
{
    const std::string text = value.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
    return text.size() <= kLongestQuote ? text : text.substr(0, kLongestQuote) + " ...";
}

template <typename Number>
std::string rangeText(std::string_view kind, Number least, Number most)
{
    std::ostringstream text;
    text << "must be a " << kind << " from " << least << " to " << most;
    return text.str();
}

}   // namespace

JsonValue::JsonValue(const nlohmann::json& value, std::string place)
    : m_value(&value), m_place(std::move(place))
{}

bool JsonValue::isInteger() const
{
    return m_value->is_number_integer();
}

bool JsonValue::isText() const
{
    return m_value->is_string();
}

bool JsonValue::isNull() const
{
    return m_value->is_null();
}

bool JsonValue::isObject() const
{
    return m_value->is_object();
}

bool JsonValue::boolean() const
{
    if (!m_value->is_boolean())
        refuse("must be true or false");
    return m_value->get<bool>();
}

int64_t JsonValue::integer(int64_t least, int64_t most) const
{
    const bool fits = m_value->is_number_unsigned() ? std::in_range<int64_t>(m_value->get<uint64_t>())
                                                    : m_value->is_number_integer();
    if (!fits || m_value->get<int64_t>() < least || m_value->get<int64_t>() > most)
        refuse(rangeText("whole number", least, most));
    return m_value->get<int64_t>();
}

uint64_t JsonValue::natural(uint64_t most) const
{
    if (!m_value->is_number_unsigned() || m_value->get<uint64_t>() > most)
        refuse(rangeText("whole number", uint64_t{0}, most));
    return m_value->get<uint64_t>();
}

double JsonValue::number(double least, double most) const
{
    if (!m_value->is_number() || m_value->get<double>() < least || m_value->get<double>() > most)
        refuse(rangeText("number", least, most));
    return m_value->get<double>();
}

const std::string& JsonValue::text() const
{
    if (!m_value->is_string())
        refuse("must be a text");
    return m_value->get_ref<const std::string&>();
}

JsonObject JsonValue::object() const
{
    if (!m_value->is_object())
        refuse("must be an object in braces");
    return {*m_value, m_place};
}

size_t JsonValue::eachEntry(const std::function<void(const JsonValue&)>& visit) const
{
    if (!m_value->is_array())
        refuse("must be a list in brackets");
    for (size_t i = 0; i < m_value->size(); ++i)
        visit(JsonValue((*m_value)[i], m_place + "[" + std::to_string(i) + "]"));
    return m_value->size();
}

void JsonValue::refuse(std::string_view problem) const
{
    std::string text = m_place.empty() ? "the whole" : m_place;
    text += ": ";
    text += problem;
    throw JsonError(text + ", but is " + quoted(*m_value));
}

}   // namespace orvo::sim

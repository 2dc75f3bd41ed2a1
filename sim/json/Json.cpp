#include "sim/json/Json.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <numeric>
#include <set>
#include <sstream>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "os/PathText.h"

namespace orvo::sim {

namespace {

constexpr size_t kLongestQuote = 40;
constexpr size_t kMostNames = 20;   // that are all shown
constexpr size_t kNearestNames = 3;

/// The number of characters to insert, remove or replace.
size_t editDistance(std::string_view from, std::string_view to)
{
    std::vector<size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), size_t{0});
    for (size_t i = 0; i < from.size(); ++i) {
        size_t diagonal = std::exchange(row[0], i + 1);
        for (size_t j = 0; j < to.size(); ++j) {
            const size_t replaced = diagonal + (from[i] == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, diagonal + 1, row[j] + 1});
        }
    }
    return row.back();
}

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

using nlohmann::json;

std::string contentOf(const std::string& path)
{
    std::ifstream file(os::pathOf(path), std::ios::binary);
    std::string content;
    std::array<char, 65'536> part{};
    while (file.read(part.data(), part.size()) || file.gcount() > 0)
        content.append(part.data(), static_cast<size_t>(file.gcount()));
    if (!file.eof())
        throw JsonError("cannot be read");
    return content;
}

/// Refuses a key that appears twice in one object: the parser would silently keep the last of the two.
class TwinKeys {
public:
    bool operator()(int /*depth*/, json::parse_event_t event, json& parsed)
    {
        if (event == json::parse_event_t::object_start)
            m_open.emplace_back();
        else if (event == json::parse_event_t::object_end)
            m_open.pop_back();
        else if (event == json::parse_event_t::key && !m_open.back().insert(parsed.get<std::string>()).second)
            throw JsonError("the key \"" + parsed.get<std::string>() + "\" stands twice in one object");
        return true;
    }

private:
    std::vector<std::set<std::string>> m_open;
};

json parse(const std::string& content)
{
    try {
        return json::parse(content, TwinKeys(), true, true);
    } catch (const json::exception& error) {
        const std::string_view text = error.what();   // "[json.exception...] parse error at line ..."
        const size_t start = text.find("] ");
        throw JsonError(std::string(start == std::string_view::npos ? text : text.substr(start + 2)));
    }
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
        throw JsonError(placeOf(member.key()) + ": is not known here; " +
                        knownNames(member.key(), {m_known.begin(), m_known.end()}));
    }
}

std::string JsonObject::placeOf(std::string_view key) const
{
    return (m_place.empty() ? "" : m_place + ".") + std::string(key);
}

void readJsonFile(const std::string& path, const std::function<void(JsonObject&)>& read)
{
    try {
        const json content = parse(contentOf(path));
        JsonObject object = JsonValue(content, "").object();
        read(object);
        object.refuseOthers();
    } catch (const JsonError& error) {
        throw JsonError(path + ": " + error.what());
    }
}

std::string knownNames(std::string_view wanted, const std::vector<std::string_view>& names)
{
    std::vector<std::string_view> shown = names;
    const bool areMany = names.size() > kMostNames;
    if (areMany) {
        std::stable_sort(shown.begin(), shown.end(), [&](std::string_view a, std::string_view b) {
            return editDistance(wanted, a) < editDistance(wanted, b);
        });
        shown.resize(kNearestNames);
    }
    std::string text = areMany ? "nearest are " : "known are ";
    for (size_t i = 0; i < shown.size(); ++i)
        (text += i ? ", " : "") += shown[i];
    return text;
}

std::filesystem::path pathBeside(const std::string& file, const JsonValue& path)
{
    const std::string& text = path.text();
    return os::pathOf(file).parent_path() / std::u8string(text.begin(), text.end());
}

}   // namespace orvo::sim

#include "sim/brdlib5/ParameterDescription.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <optional>
#include <string>

#include "sim/json/Json.h"

namespace orvo::sim {

namespace {

template <typename Number>
using Limits = std::numeric_limits<Number>;

bool isInteger(ValueType type)
{
    return type != ValueType::Double && type != ValueType::Text;
}

bool isSigned(ValueType type)
{
    return type == ValueType::Int32 || type == ValueType::Int64;
}

Value valueOf(ValueType type, const JsonValue& value)
{
    switch (type) {
    case ValueType::Int32:
        return value.integer(Limits<int32_t>::min(), Limits<int32_t>::max());
    case ValueType::UInt32:
        return value.natural(Limits<uint32_t>::max());
    case ValueType::Int64:
        return value.integer(Limits<int64_t>::min(), Limits<int64_t>::max());
    case ValueType::UInt64:
    case ValueType::Wide:
        return value.natural(Limits<uint64_t>::max());
    case ValueType::Double:
        return value.number(Limits<double>::lowest(), Limits<double>::max());
    case ValueType::Text:
        break;
    }
    return value.text();
}

/// Zero, or what is nearest to it among what the parameter takes; of an enumeration the first entry.
Value defaultOf(const ParameterDescription& parameter)
{
    if (parameter.type == ValueType::Text)
        return std::string();
    const int64_t number = parameter.entries.empty() ? 0 : parameter.entries.front().value;
    Value value = converted(number, parameter.type);
    if (parameter.least)
        value = std::max(value, *parameter.least);
    if (parameter.most)
        value = std::min(value, *parameter.most);
    return value;
}

void readRange(JsonObject& object, ParameterDescription& parameter)
{
    const auto read = [&](const char* key) -> std::optional<Value> {
        const auto limit = object.find(key);
        if (!limit)
            return std::nullopt;
        if (parameter.type == ValueType::Text || !parameter.entries.empty())
            limit->refuse("must not be there: neither a text nor an enumeration has a range");
        return valueOf(parameter.type, *limit);
    };
    parameter.least = read("least");
    parameter.most = read("most");
    if (parameter.least && parameter.most && *parameter.least > *parameter.most)
        object.need("most").refuse(R"(must not be below "least")");
}

void readValue(JsonObject& object, ParameterDescription& parameter)
{
    const auto value = object.find("value");
    parameter.value = value ? valueOf(parameter.type, *value) : defaultOf(parameter);
    if (value && !parameter.takes(parameter.value))
        value->refuse(parameter.entries.empty() ? R"(must be within "least" and "most")"
                                                : "must be the value of an entry");
}

void readEntry(const JsonValue& entry, ParameterDescription& parameter)
{
    JsonObject object = entry.object();
    const JsonValue value = object.need("value");
    const JsonValue name = object.need("name");
    object.refuseOthers();
    const ParameterEntry read{
        static_cast<int32_t>(
            value.integer(isSigned(parameter.type) ? Limits<int32_t>::min() : 0, Limits<int32_t>::max())),
        name.text()};
    if (read.value == -1)
        value.refuse("must not be -1, which ends the table");
    for (const ParameterEntry& other : parameter.entries) {
        if (other.value == read.value)
            value.refuse("must differ from that of every other entry");
        if (other.name == read.name)
            name.refuse("must differ from that of every other entry");
    }
    parameter.entries.push_back(read);
}

void readEntries(JsonObject& object, ParameterDescription& parameter)
{
    const auto entries = object.find("entries");
    if (!entries)
        return;
    if (!isInteger(parameter.type))
        entries->refuse("must not be there: only an integer is an enumeration");
    if (entries->eachEntry([&](const JsonValue& entry) { readEntry(entry, parameter); }) == 0)
        entries->refuse("must have an entry");
}

ParameterDescription readParameter(const JsonValue& entry, const std::vector<ParameterDescription>& others)
{
    JsonObject object = entry.object();
    const JsonValue id = object.need("id");
    const JsonValue name = object.need("name");
    ParameterDescription parameter;
    parameter.id = static_cast<int32_t>(id.integer(0, Limits<int32_t>::max()));
    parameter.name = name.text();
    if (parameter.name.empty())
        name.refuse("must not be empty");
    const auto refuseSame = [&](const auto& other) {
        if (other.id == parameter.id)
            id.refuse("must differ from that of every other parameter");
        if (other.name == parameter.name)
            name.refuse("must differ from that of every other parameter");
    };
    std::for_each(std::begin(built_in::kAll), std::end(built_in::kAll), refuseSame);
    std::for_each(others.begin(), others.end(), refuseSame);

    parameter.type = static_cast<ValueType>(object.need("type").integer(
        int64_t{static_cast<int32_t>(ValueType::Int32)}, int64_t{static_cast<int32_t>(ValueType::Wide)}));
    readEntries(object, parameter);
    readRange(object, parameter);
    readValue(object, parameter);
    if (const auto text = object.find("text"))
        parameter.text = text->text();
    if (const auto writeable = object.find("writeable"))
        parameter.isWriteable = writeable->boolean();
    object.refuseOthers();
    return parameter;
}

}   // namespace

bool ParameterDescription::takes(const Value& candidate) const
{
    // Asked for what holds, because nothing holds of what is no number.
    if ((least && !(candidate >= *least)) || (most && !(candidate <= *most)))
        return false;
    return entries.empty() || std::any_of(entries.begin(), entries.end(), [&](const ParameterEntry& entry) {
               return converted(int64_t{entry.value}, type) == candidate;
           });
}

std::vector<ParameterDescription> readParameters(const JsonValue& list)
{
    std::vector<ParameterDescription> parameters;
    list.eachEntry([&](const JsonValue& entry) { parameters.push_back(readParameter(entry, parameters)); });
    return parameters;
}

}   // namespace orvo::sim

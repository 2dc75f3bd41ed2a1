#include "sim/brdlib5/ParameterTable.h"

#include <algorithm>

#include "sim/brdlib5/BrdError.h"

namespace orvo::sim {

namespace {

constexpr int32_t kValueProperty = 0;
constexpr int32_t kTypeProperty = 1;
constexpr int32_t kTextProperty = 3;
constexpr int32_t kTableSizeProperty = 13;
constexpr int32_t kTableProperty = 14;
constexpr int32_t kEndOfTable = -1;

void append(std::vector<std::byte>& bytes, int32_t number)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes.push_back(static_cast<std::byte>(static_cast<uint32_t>(number) >> shift & 0xFF));
}

void append(std::vector<std::byte>& bytes, const std::string& text)
{
    const auto* const first = reinterpret_cast<const std::byte*>(text.c_str());
    bytes.insert(bytes.end(), first, first + text.size() + 1);
}

std::vector<std::byte> bytesOf(const std::string& text)
{
    std::vector<std::byte> bytes;
    append(bytes, text);
    return bytes;
}

/// Packed: each entry's number, then its name with the NUL; then the end mark in the place of a number.
std::vector<std::byte> tableOf(const Parameter& parameter)
{
    std::vector<std::byte> bytes;
    for (const ParameterEntry& entry : parameter.entries) {
        append(bytes, entry.value);
        append(bytes, entry.name);
    }
    if (!bytes.empty())
        append(bytes, kEndOfTable);
    return bytes;
}

std::string codeOf(ValueType type)
{
    return std::to_string(static_cast<int32_t>(type));
}

/// A value of another width would be read beyond its end, or in part; a double says by itself what it holds.
bool canBeWrittenAs(ValueType given, ValueType type)
{
    if (given == ValueType::Double)
        return type != ValueType::Text;
    return given == type || (given == ValueType::UInt64 && type == ValueType::Wide);
}

}   // namespace

const Parameter& ParameterTable::byId(int32_t id) const
{
    const auto found = std::find_if(m_parameters.begin(), m_parameters.end(),
                                    [&](const Parameter& parameter) { return parameter.id == id; });
    if (found == m_parameters.end())
        throw BrdError(kUnknownParameter, "The applet has no parameter " + std::to_string(id));
    return *found;
}

int32_t ParameterTable::idOf(std::string_view name) const
{
    const auto found = std::find_if(m_parameters.begin(), m_parameters.end(),
                                    [&](const Parameter& parameter) { return parameter.name == name; });
    if (found == m_parameters.end())
        throw BrdError(kUnknownParameter, "The applet has no parameter \"" + std::string(name) + "\"");
    return found->id;
}

void ParameterTable::set(int32_t id, uint32_t scope, ValueType type, const void* value) const
{
    const Parameter& parameter = byId(id);
    if (!parameter.set)
        throw BrdError(kReadOnly, parameter.name + " can't be written");
    if (!canBeWrittenAs(type, parameter.type))
        throw BrdError(kWrongType, parameter.name + " is of the type " + codeOf(parameter.type) +
                                       " and can't be written as one of " + codeOf(type));
    parameter.set(scope, converted(readValue(type, value), parameter.type));
}

std::vector<std::byte> ParameterTable::property(int32_t id, int32_t code, uint32_t scope) const
{
    const Parameter& parameter = byId(id);
    switch (code) {
    case kValueProperty:
        return bytesOf(textOf(parameter.get(scope, 0)));
    case kTypeProperty:
        return bytesOf(codeOf(parameter.type));
    case kTextProperty:
        return bytesOf(parameter.text.empty() ? parameter.name : parameter.text);
    case kTableSizeProperty:
        return bytesOf(std::to_string(tableOf(parameter).size()));
    case kTableProperty:
        if (!parameter.entries.empty())
            return tableOf(parameter);
        break;
    }
    throw BrdError(kUnknownCode, parameter.name + " has no property " + std::to_string(code));
}

Value StoredParameter::get(uint32_t dma) const
{
    const os::MutexLock lock(m_mutex);
    const auto found = m_written.find(dma);
    return found == m_written.end() ? m_description.value : found->second;
}

void StoredParameter::set(uint32_t dma, const Value& value)
{
    if (!m_description.takes(value))
        throw BrdError(kOutOfRange, m_description.name + " can't be " + textOf(value));
    const os::MutexLock lock(m_mutex);
    m_written[dma] = value;
}

}   // namespace orvo::sim

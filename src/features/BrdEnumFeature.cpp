#include "features/BrdEnumFeature.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <stdexcept>

#include "brdlib/binding/BrdFunctions.h"
#include "features/NumberText.h"

namespace orvo::cognex {

namespace {

constexpr const char* kBrdEnumSource = "features/BrdEnumFeature";
constexpr size_t kSizeTextSize = 255;
constexpr size_t kValueTextSize = 20;
constexpr int32_t kEndMark = -1;   // in the place of the next entry's value

struct Entry {
    int32_t value;
    std::string key;
};

[[noreturn]] void refuseTable()
{
    throw std::runtime_error("Invalid enum table");
}

/// Takes the number at the front of the bytes, little-endian as the machine is, and drops it from them.
int32_t takeValue(std::span<const char>& bytes)
{
    int32_t value = 0;
    if (bytes.size() < sizeof value)
        refuseTable();
    std::memcpy(&value, bytes.data(), sizeof value);
    bytes = bytes.subspan(sizeof value);
    return value;
}

/// Takes the text at the front of the bytes, and drops it and its NUL from them.
std::string takeKey(std::span<const char>& bytes)
{
    const auto end = std::find(bytes.begin(), bytes.end(), '\0');
    if (end == bytes.end())
        refuseTable();
    std::string key(bytes.begin(), end);
    bytes = bytes.subspan(key.size() + 1);
    return key;
}

/// The entries of a packed table: each is a value of four bytes and a text with its NUL, without padding.
/// There is a first entry even if its value is that of the end mark.
std::vector<Entry> entriesOf(std::span<const char> table)
{
    std::vector<Entry> entries;
    int32_t value = takeValue(table);
    do {
        std::string key = takeKey(table);
        entries.push_back({value, std::move(key)});
        value = takeValue(table);
    } while (value != kEndMark);
    return entries;
}

}   // namespace

void BrdEnumFeature::refresh()
{
    const auto [status, sizeText] =
        brdProperty(boardHandle(), parameterId(), BrdProperty::EnumerationSize, kSizeTextSize);
    check(status);
    const int32_t size = parseInt(sizeText.c_str());
    if (size <= 0)
        refuseTable();
    std::vector<char> table(static_cast<size_t>(size));
    int32_t delivered = size;
    check(Brd_getParameterProperty(boardHandle(), parameterId(),
                                   static_cast<int32_t>(BrdProperty::Enumeration), table.data(), &delivered));
    const auto entries = entriesOf({table.data(), static_cast<size_t>(std::clamp(delivered, 0, size))});

    std::map<std::string, int32_t> keyToValue;
    std::map<int32_t, std::string> valueToKey;
    std::vector<std::string> keys;
    for (const auto& [value, key] : entries) {
        keyToValue[key] = value;
        valueToKey[value] = key;
        keys.push_back(key);
    }
    m_keyToValue = std::move(keyToValue);
    m_valueToKey = std::move(valueToKey);
    m_keys = std::move(keys);
}

std::string BrdEnumFeature::validEnum(int32_t index)
{
    if (!hasPosition(index))
        throw std::runtime_error("Invalid enum index!");
    return m_keys[static_cast<size_t>(index)];
}

bool BrdEnumFeature::hasPosition(int32_t position) const
{
    return position >= 0 && static_cast<size_t>(position) < m_keys.size();
}

void BrdEnumFeature::doRead(char* val)
{
    traceStep(kBrdEnumSource, "ReadEnum start");
    const auto [status, value] =
        brdProperty(boardHandle(), parameterId(), BrdProperty::Value, kValueTextSize);
    check(status);
    const auto entry = m_valueToKey.find(parseInt(value.c_str()));
    if (entry == m_valueToKey.end())
        throw std::runtime_error("The parameter has a value that can not be mapped on a enum entry.");
    copyWhole(val, entry->second);
    traceStep(kBrdEnumSource, "ReadEnum End");
}

void BrdEnumFeature::doWrite(const char* val)
{
    traceStep(kBrdEnumSource, "WriteEnum start");
    const auto entry = m_keyToValue.find(val);
    if (entry == m_keyToValue.end())
        throw std::runtime_error("Invalid enum key!");
    setParameter(&entry->second);
    traceStep(kBrdEnumSource, "WriteEnum End");
}

void BrdEnumFeature::doExecute()
{
    throw std::runtime_error("Execute function is not implemented for enum feature.");
}

}   // namespace orvo::cognex

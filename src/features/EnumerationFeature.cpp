#include "features/EnumerationFeature.h"

#include <stdexcept>

namespace orvo::cognex {

namespace {

constexpr const char* kEnumerationSource = "features/EnumerationFeature";

}   // namespace

void EnumerationFeature::addEntry(const std::string& key, int32_t value)
{
    m_keyToValue[key] = value;
    m_valueToKey[value] = key;
}

void EnumerationFeature::addEntry(const std::string& key)
{
    addEntry(key, static_cast<int32_t>(m_valueToKey.size()));
}

std::string EnumerationFeature::validEnum(int32_t index)
{
    const auto entry = m_valueToKey.find(index);
    if (entry == m_valueToKey.end())
        throw std::runtime_error("Invalid enum index!");
    return entry->second;
}

void EnumerationFeature::doRead(char* val)
{
    traceStep(kEnumerationSource, "ReadEnum start");
    const auto entry = m_valueToKey.find(m_value);
    if (entry == m_valueToKey.end())
        throw std::runtime_error("The parameter has a value that can not be mapped on a enum entry.");
    copyWhole(val, entry->second);
    traceStep(kEnumerationSource, "ReadEnum End");
}

void EnumerationFeature::doWrite(const char* val)
{
    traceStep(kEnumerationSource, "WriteEnum start");
    const auto entry = m_keyToValue.find(val);
    if (entry == m_keyToValue.end())
        throw std::runtime_error("Invalid enum key!");
    m_value = entry->second;
    notifyObservers();
    traceStep(kEnumerationSource, "WriteEnum End");
}

void EnumerationFeature::doExecute()
{
    throw std::runtime_error("Execute function is not implemented for enum feature.");
}

}   // namespace orvo::cognex

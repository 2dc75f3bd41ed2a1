#include "features/BasicFeatures.h"

#include <optional>
#include <stdexcept>
#include <string_view>

#include "AIKException.h"
#include "features/NumberText.h"

namespace orvo::cognex {

namespace {

[[noreturn]] void refuse()
{
    throw AIKException("This function is not implemented.");
}

}   // namespace

void BooleanFeature::doRead(char* val)
{
    copyBounded(val, flagText(m_value));
}

void BooleanFeature::doWrite(const char* val)
{
    m_value = std::string_view(val) == "True";
}

void BooleanFeature::doExecute()
{
    throw std::runtime_error("Execute function is not implemented for bool feature.");
}

template <typename T>
void NumberFeature<T>::doRead(char* val)
{
    copyWhole(val, formatNumber(value()));
}

template <typename T>
void NumberFeature<T>::doWrite(const char* val)
{
    const std::optional<T> number = parseNumber<T>(val);
    if (!number)
        throw AIKException("Cannot parse char array to a number value");
    setValue(*number);
}

template <typename T>
void NumberFeature<T>::doExecute()
{
    throw std::runtime_error("Execute function is not implemented for int feature.");
}

template class NumberFeature<int>;
template class NumberFeature<unsigned int>;
template class NumberFeature<unsigned long long>;

void StringFeature::doRead(char* val)
{
    copyBounded(val, m_value);
}

void StringFeature::doWrite(const char* val)
{
    m_value = val;
}

void StringFeature::doExecute()
{
    // "bool" is deliberate: hosts compare this text.
    throw std::runtime_error("Execute function is not implemented for bool feature.");
}

CommandFeature::CommandFeature()
    : AdapterFeature(FeatureType::Command),
      m_function([] { throw std::runtime_error("No function is defined for the command."); })
{}

void CommandFeature::doRead(char* /*val*/)
{
    throw std::runtime_error("Read function is not implemented for command feature.");
}

void CommandFeature::doWrite(const char* /*val*/)
{
    throw std::runtime_error("Write function is not implemented for command feature.");
}

void CommandFeature::doExecute()
{
    m_function();
}

ProxyFeature::ProxyFeature()
    : m_readFunction([](char*) { refuse(); }),
      m_writeFunction([](const char*) { refuse(); }),
      m_executeFunction(refuse)
{}

}   // namespace orvo::cognex

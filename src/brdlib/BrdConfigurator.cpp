#include "brdlib/BrdConfigurator.h"

#include <algorithm>
#include <iterator>

#include "AIKException.h"
#include "brdlib/DmaPort.h"
#include "brdlib/binding/BrdFunctions.h"
#include "features/AdapterFeature.h"
#include "features/BasicFeatures.h"
#include "features/BrdFeature.h"
#include "features/FeatureContainer.h"
#include "features/NumberText.h"

namespace orvo::cognex {

namespace {

// The types of the library's parameters, by the numbers that it publishes.
enum ParameterType : int32_t {
    kInt32 = 1,
    kUnsigned32 = 2,
    kInt64 = 3,
    kUnsigned64 = 4,
    kDouble = 5,
    kText = 6,
    kFurtherInteger = 7,
};

constexpr size_t kTypeTextSize = 128;

uint32_t dmaArgument(const DmaPort& port)
{
    return static_cast<uint32_t>(port.dmaIndex());
}

void requireType(bool fits, const char* refusal)
{
    if (!fits)
        throw AIKException(refusal);
}

}   // namespace

const BrdConfigurator::IntegerType BrdConfigurator::kIntegerTypes[] = {
    {kInt32, kInt32, &BrdConfigurator::writeNumber<int32_t>},
    {kUnsigned32, kUnsigned32, &BrdConfigurator::writeNumber<uint32_t>},
    {kInt64, kInt64, &BrdConfigurator::writeNumber<int64_t>},
    {kUnsigned64, kUnsigned64, &BrdConfigurator::writeNumber<uint64_t>},
    {kFurtherInteger, kUnsigned64, &BrdConfigurator::writeNumber<uint64_t>},
};

BrdConfigurator::BrdConfigurator() : m_features(std::make_shared<FeatureContainer>())
{
    m_key = addFeature<StringFeature>(*m_features, "BrdFeatureKey", "Parameter name to access the brdlib.",
                                      kReadWrite);
    addProxyValues<BrdConfigurator>(
        *m_features, kReadWrite, *this,
        {{"BrdStringValue", "Access string parameter of the brdlib.", FeatureType::String,
          &BrdConfigurator::readString, &BrdConfigurator::writeString},
         {"BrdIntValue", "Access integer parameter of the brdlib.", FeatureType::Integer,
          &BrdConfigurator::readInt, &BrdConfigurator::writeInt},
         {"BrdFloatValue", "Access float parameter of the brdlib.", FeatureType::Float,
          &BrdConfigurator::readFloat, &BrdConfigurator::writeFloat}});
}

void BrdConfigurator::readString(char* val)
{
    requireType(parameterType() == kText, "Parameter is not a string!");
    readValue(val);
}

void BrdConfigurator::writeString(const char* val)
{
    requireType(parameterType() == kText, "Parameter is not a string!");
    const int32_t id = parameterId();
    const auto port = locked(m_dmaPort);
    checkBrd(Brd_setParameter(port->boardHandle(), id, val, dmaArgument(*port)));
}

void BrdConfigurator::readInt(char* val)
{
    integerType();   // refuses all others
    readValue(val);
}

void BrdConfigurator::writeInt(const char* val)
{
    const IntegerType& type = integerType();
    (this->*type.write)(val, type.writtenAs);
}

void BrdConfigurator::readFloat(char* val)
{
    requireType(parameterType() == kDouble, "Parameter is not a float type!");
    readValue(val);
}

void BrdConfigurator::writeFloat(const char* val)
{
    parameterType();   // asked for and not looked at: a parameter without a type fails here
    writeNumber<double>(val, kDouble);
}

const BrdConfigurator::IntegerType& BrdConfigurator::integerType() const
{
    const int32_t type = parameterType();
    const auto* const row =
        std::find_if(std::begin(kIntegerTypes), std::end(kIntegerTypes),
                     [&](const IntegerType& candidate) { return candidate.type == type; });
    requireType(row != std::end(kIntegerTypes), "Parameter is not an integer type!");
    return *row;
}

int32_t BrdConfigurator::parameterId() const
{
    const std::string name = m_key->value();
    const int32_t id = Brd_getParameterIdByName(locked(m_dmaPort)->boardHandle(), name.c_str());
    if (id < 0)
        throwBrdError(id);
    return id;
}

int32_t BrdConfigurator::parameterType() const
{
    const int32_t id = parameterId();
    const auto [status, type] =
        brdProperty(locked(m_dmaPort)->boardHandle(), id, BrdProperty::Type, kTypeTextSize);
    checkBrd(status);
    return parseInt(type.c_str());
}

void BrdConfigurator::readValue(char* val) const
{
    const int32_t id = parameterId();
    const auto port = locked(m_dmaPort);
    auto length = static_cast<int32_t>(kHostTextSize);
    checkBrd(Brd_getParameterPropertyEx(port->boardHandle(), id, static_cast<int32_t>(BrdProperty::Value),
                                        dmaArgument(*port), val, &length));
}

template <typename T>
void BrdConfigurator::writeNumber(const char* val, int32_t typeCode) const
{
    const T number = parseOrThrow<T>(val);
    const int32_t id = parameterId();
    const auto port = locked(m_dmaPort);
    checkBrd(Brd_setParameterWithType(port->boardHandle(), id, &number, dmaArgument(*port), typeCode));
}

}   // namespace orvo::cognex

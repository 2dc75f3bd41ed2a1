#include "sim/simulator/ParameterSheet.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <utility>

namespace orvo::sim {

namespace {

/// A side of the picture and where it begins share the sensor: each ends where the other leaves off.
struct SensorShare {
    std::string_view name, other, sensor;
};

constexpr SensorShare kSensorShares[] = {
    {"Width", "OffsetX", "WidthMax"},
    {"OffsetX", "Width", "WidthMax"},
    {"Height", "OffsetY", "HeightMax"},
    {"OffsetY", "Height", "HeightMax"},
};

void copyText(const std::string& text, ParameterValue& value)
{
    const size_t length = std::min(text.size(), sizeof value.text - 1);
    std::copy_n(text.data(), length, value.text);
    value.text[length] = '\0';
}

}   // namespace

const CameraParameter* ParameterSheet::find(std::string_view name) const
{
    const auto found = m_parameters.find(name);
    return found == m_parameters.end() ? nullptr : &found->second;
}

std::vector<std::string_view> ParameterSheet::names() const
{
    std::vector<std::string_view> names;
    names.reserve(m_parameters.size());
    for (const auto& [name, parameter] : m_parameters)
        names.emplace_back(name);
    return names;
}

CameraParameter* ParameterSheet::findToChange(std::string_view name)
{
    return const_cast<CameraParameter*>(std::as_const(*this).find(name));
}

CameraParameter& ParameterSheet::add(std::string name, CameraParameter parameter)
{
    return m_parameters[std::move(name)] = std::move(parameter);
}

void ParameterSheet::remove(std::string_view name)
{
    const auto found = m_parameters.find(name);
    if (found != m_parameters.end())
        m_parameters.erase(found);
}

CameraStatus ParameterSheet::read(std::string_view name, ParameterType type, ParameterValue& value) const
{
    const CameraParameter* const parameter = find(name);
    if (!parameter)
        return CameraStatus::UnknownParameter;
    if (parameter->type != type)
        return CameraStatus::WrongType;
    value.integer = parameter->integer;
    value.real = parameter->real;
    copyText(parameter->text, value);
    return CameraStatus::Ok;
}

CameraStatus ParameterSheet::write(std::string_view name, ParameterType type, const ParameterValue& value)
{
    CameraParameter* const parameter = findToChange(name);
    if (!parameter)
        return CameraStatus::UnknownParameter;
    if (parameter->type != type)
        return CameraStatus::WrongType;
    if (parameter->access == ParameterAccess::ReadOnly)
        return CameraStatus::NotWritable;
    return store(name, *parameter, value);
}

CameraStatus ParameterSheet::preset(std::string_view name, const ParameterValue& value)
{
    CameraParameter* const parameter = findToChange(name);
    return parameter ? store(name, *parameter, value) : CameraStatus::UnknownParameter;
}

CameraStatus ParameterSheet::store(std::string_view name, CameraParameter& parameter,
                                   const ParameterValue& value)
{
    const std::string_view text = value.text;
    switch (parameter.type) {
    case ParameterType::Integer:
        if (value.integer < parameter.least || value.integer > mostNow(name, parameter))
            return CameraStatus::OutOfRange;
        if ((value.integer - parameter.least) % parameter.step != 0)
            return CameraStatus::OffStep;
        parameter.integer = value.integer;
        return CameraStatus::Ok;
    case ParameterType::Boolean:
        parameter.integer = value.integer != 0;
        return CameraStatus::Ok;
    case ParameterType::Float:
        if (std::isnan(value.real) || value.real < parameter.leastReal || value.real > parameter.mostReal)
            return CameraStatus::OutOfRange;
        parameter.real = value.real;
        return CameraStatus::Ok;
    case ParameterType::String:
        if (text.size() > parameter.longestText)
            return CameraStatus::OutOfRange;
        parameter.text = text;
        return CameraStatus::Ok;
    case ParameterType::Enumeration:
        if (std::find(parameter.entries.begin(), parameter.entries.end(), text) == parameter.entries.end())
            return CameraStatus::UnknownEntry;
        parameter.text = text;
        return CameraStatus::Ok;
    case ParameterType::Command:
        break;
    }
    return CameraStatus::WrongType;
}

int64_t ParameterSheet::mostNow(std::string_view name, const CameraParameter& parameter) const
{
    const auto* const share = std::find_if(std::begin(kSensorShares), std::end(kSensorShares),
                                           [&](const SensorShare& row) { return row.name == name; });
    if (share == std::end(kSensorShares) || !find(share->sensor))
        return parameter.most;
    return integer(share->sensor) - (find(share->other) ? integer(share->other) : 0);
}

void ParameterSheet::fitToSensor()
{
    for (const auto& [side, sensor] : {std::pair("Width", "WidthMax"), std::pair("Height", "HeightMax")}) {
        CameraParameter* const parameter = findToChange(side);
        parameter->integer = std::min(parameter->integer, integer(sensor));
        parameter->least = std::min(parameter->least, parameter->integer);
    }
}

int64_t ParameterSheet::integer(std::string_view name) const
{
    return find(name)->integer;
}

double ParameterSheet::real(std::string_view name) const
{
    return find(name)->real;
}

const std::string& ParameterSheet::text(std::string_view name) const
{
    return find(name)->text;
}

}   // namespace orvo::sim

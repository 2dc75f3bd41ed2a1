#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "sim/seam/BoardTypes.h"
#include "sim/seam/Camera.h"

namespace orvo::sim {

enum class ParameterAccess { ReadOnly, ReadWrite };

/// One parameter of a camera: what it is, what it takes, what it holds.
struct CameraParameter {
    ParameterType type = ParameterType::Integer;
    ParameterAccess access = ParameterAccess::ReadWrite;
    int64_t least = 0, most = 0, step = 1;   // of an integer
    double leastReal = 0, mostReal = 0;      // of a float
    std::vector<std::string> entries;        // of an enumeration
    size_t longestText = 0;                  // of a string, in bytes without the NUL

    int64_t integer = 0;   // a boolean is 0 or 1
    double real = 0;
    std::string text;   // of an enumeration: the entry
};

/// The parameters of one camera by name. A copy is a user set. Threads: one at a time.
class ParameterSheet {
public:
    /// What a camera of that family has at first: the names, types and units of the GenICam Standard
    /// Features Naming Convention.
    static ParameterSheet standard(const CameraFamily& family);

    /// Null for a name that it doesn't have.
    const CameraParameter* find(std::string_view name) const;
    std::vector<std::string_view> names() const;
    CameraParameter& add(std::string name, CameraParameter parameter);
    void remove(std::string_view name);

    CameraStatus read(std::string_view name, ParameterType type, ParameterValue& value) const;
    /// As a host writes. What fails changes nothing.
    CameraStatus write(std::string_view name, ParameterType type, const ParameterValue& value);
    /// As the maker of the camera sets it: also what a host can only read.
    CameraStatus preset(std::string_view name, const ParameterValue& value);

    /// Makes the picture no larger than the sensor.
    void fitToSensor();

    // For the camera itself, of parameters that it surely has, and of their type.
    int64_t integer(std::string_view name) const;
    double real(std::string_view name) const;
    const std::string& text(std::string_view name) const;

private:
    CameraParameter* findToChange(std::string_view name);
    CameraStatus store(std::string_view name, CameraParameter& parameter, const ParameterValue& value);
    int64_t mostNow(std::string_view name, const CameraParameter& parameter) const;

    std::map<std::string, CameraParameter, std::less<>> m_parameters;
};

}   // namespace orvo::sim

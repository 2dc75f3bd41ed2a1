#include <cstdint>
#include <string>
#include <vector>

#include "sim/simulator/ParameterSheet.h"

namespace orvo::sim {

namespace {

constexpr ParameterAccess kRead = ParameterAccess::ReadOnly;
constexpr ParameterAccess kWrite = ParameterAccess::ReadWrite;

constexpr int64_t kSensorWidth = 1'280, kSensorHeight = 1'024;   // pixels

struct IntegerRow {
    const char* name;
    ParameterAccess access;
    int64_t value, least, most, step;
};

constexpr IntegerRow kIntegers[] = {
    {"SensorWidth", kRead, kSensorWidth, 1, 65'536, 1},
    {"SensorHeight", kRead, kSensorHeight, 1, 65'536, 1},
    {"WidthMax", kRead, kSensorWidth, 1, 65'536, 1},
    {"HeightMax", kRead, kSensorHeight, 1, 65'536, 1},
    {"Width", kWrite, kSensorWidth, 16, kSensorWidth, 4},
    {"Height", kWrite, kSensorHeight, 16, kSensorHeight, 2},
    {"OffsetX", kWrite, 0, 0, 0, 4},   // their upper ends depend on the size
    {"OffsetY", kWrite, 0, 0, 0, 2},
};

constexpr IntegerRow kNetworkIntegers[] = {
    {"GevSCPSPacketSize", kWrite, 1'500, 576, 9'000, 4},   // bytes
    {"GevSCPD", kWrite, 0, 0, 1'000'000, 1},               // ticks between packets
};

struct FloatRow {
    const char* name;
    ParameterAccess access;
    double value, least, most;
};

constexpr FloatRow kFloats[] = {
    {"AcquisitionFrameRate", kWrite, 30, 0.1, 1'000},   // pictures per second
    {"ExposureTime", kWrite, 10'000, 10, 10'000'000},   // microseconds
    {"Gain", kWrite, 0, 0, 24},                         // decibels
    {"DeviceTemperature", kRead, 41.5, -100, 200},      // degrees Celsius
};

struct BooleanRow {
    const char* name;
    ParameterAccess access;
    bool value;
};

constexpr BooleanRow kBooleans[] = {
    {"AcquisitionFrameRateEnable", kWrite, true},
    {"ReverseX", kWrite, false},
    {"ReverseY", kWrite, false},
};

struct StringRow {
    const char* name;
    ParameterAccess access;
    const char* value;
};

constexpr size_t kLongestName = 63;   // bytes
constexpr size_t kLongestUserId = 255;

constexpr StringRow kStrings[] = {
    {"DeviceVendorName", kRead, "Orvo"},
    {"DeviceModelName", kRead, "Simulated camera"},
    {"DeviceManufacturerInfo", kRead, "simulated"},
    {"DeviceVersion", kRead, "1.0"},
    {"DeviceFirmwareVersion", kRead, "1.0.0"},
    {"DeviceSerialNumber", kRead, ""},
    {"DeviceUserID", kWrite, ""},
};

/// The first entry is the one at first.
struct EnumerationRow {
    const char* name;
    ParameterAccess access;
    std::vector<std::string> entries;
};

std::vector<EnumerationRow> enumerations(const CameraFamily& family)
{
    return {
        {"DeviceScanType", kRead, {"Areascan"}},
        {"DeviceTemperatureSelector", kWrite, {"Mainboard", "Sensor"}},
        {"PixelFormat", kWrite,
         family.isGrey ? std::vector<std::string>{"Mono8", "Mono16", "RGB8"}
                       : std::vector<std::string>{"RGB8", "Mono8", "Mono16"}},
        {"TestPattern",
         kWrite,
         {"Off", "Black", "White", "GreyHorizontalRamp", "GreyVerticalRamp", "GreyHorizontalRampMoving",
          "GreyVerticalRampMoving", "GreyDiagonalRampMoving", "ColorBar"}},
        {"AcquisitionMode", kWrite, {"Continuous"}},
        {"ExposureMode", kWrite, {"Timed"}},
        {"GainSelector", kWrite, {"All"}},
        {"TriggerSelector", kWrite, {"FrameStart"}},
        {"TriggerMode", kWrite, {"Off", "On"}},
        {"TriggerSource", kWrite,
         family.isOnNetwork ? std::vector<std::string>{"Software", "Action0", "Line0"}
                            : std::vector<std::string>{"Software", "Line0"}},
        {"TriggerActivation", kWrite, {"RisingEdge", "FallingEdge"}},
        {"UserSetSelector", kWrite, {"Default", "UserSet0"}},
    };
}

constexpr const char* kCommands[] = {
    "AcquisitionStart", "AcquisitionStop", "TriggerSoftware", "UserSetLoad", "UserSetSave", "DeviceReset",
};

CameraParameter parameterOf(const IntegerRow& row)
{
    CameraParameter parameter{
        .type = ParameterType::Integer, .access = row.access, .entries = {}, .text = {}};
    parameter.least = row.least;
    parameter.most = row.most;
    parameter.step = row.step;
    parameter.integer = row.value;
    return parameter;
}

}   // namespace

ParameterSheet ParameterSheet::standard(const CameraFamily& family)
{
    ParameterSheet sheet;
    for (const IntegerRow& row : kIntegers)
        sheet.add(row.name, parameterOf(row));
    if (family.isOnNetwork)
        for (const IntegerRow& row : kNetworkIntegers)
            sheet.add(row.name, parameterOf(row));
    for (const FloatRow& row : kFloats) {
        CameraParameter parameter{
            .type = ParameterType::Float, .access = row.access, .entries = {}, .text = {}};
        parameter.leastReal = row.least;
        parameter.mostReal = row.most;
        parameter.real = row.value;
        sheet.add(row.name, std::move(parameter));
    }
    for (const BooleanRow& row : kBooleans)
        sheet.add(row.name, {.type = ParameterType::Boolean,
                             .access = row.access,
                             .entries = {},
                             .integer = row.value,
                             .text = {}});
    for (const StringRow& row : kStrings)
        sheet.add(row.name, {.type = ParameterType::String,
                             .access = row.access,
                             .entries = {},
                             .longestText = row.access == kWrite ? kLongestUserId : kLongestName,
                             .text = row.value});
    for (EnumerationRow& row : enumerations(family)) {
        std::string first = row.entries.front();
        sheet.add(row.name, {.type = ParameterType::Enumeration,
                             .access = row.access,
                             .entries = std::move(row.entries),
                             .text = std::move(first)});
    }
    for (const char* const name : kCommands)
        sheet.add(name, {.type = ParameterType::Command, .entries = {}, .text = {}});
    return sheet;
}

}   // namespace orvo::sim

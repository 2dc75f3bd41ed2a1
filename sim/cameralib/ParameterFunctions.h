#pragma once

#include <cstdint>

/// The functions by which parameters are set and read, the same eleven in each camera library but for the
/// prefix of their names:
///
///     int32_t Eth_setIntegerValue(uint64_t camera, const char* name, int64_t value);
///     int32_t Eth_getIntegerValue(uint64_t camera, const char* name, int64_t* value);
///     int32_t Eth_executeCommand(uint64_t camera, const char* name);
///
/// FUNCTIONS(library prefix, parameter type, type to set, type to get).
#define ORVO_SIM_PARAMETER_TYPES(FUNCTIONS, Prefix)                                                          \
    FUNCTIONS(Prefix, Integer, int64_t, int64_t)                                                             \
    FUNCTIONS(Prefix, Boolean, int32_t, int32_t)                                                             \
    FUNCTIONS(Prefix, Float, double, double)                                                                 \
    FUNCTIONS(Prefix, String, const char*, char*)                                                            \
    FUNCTIONS(Prefix, Enumeration, const char*, char*)

// NOLINTBEGIN(bugprone-macro-parentheses): what they get are types and parts of names.
#define ORVO_SIM_DECLARE_PARAMETER_TYPE(Prefix, Type, In, Out)                                               \
    int32_t Prefix##_set##Type##Value(uint64_t camera, const char* name, In value);                          \
    int32_t Prefix##_get##Type##Value(uint64_t camera, const char* name, Out* value);

#define ORVO_SIM_DECLARE_PARAMETER_FUNCTIONS(Prefix)                                                         \
    ORVO_SIM_PARAMETER_TYPES(ORVO_SIM_DECLARE_PARAMETER_TYPE, Prefix)                                        \
    int32_t Prefix##_executeCommand(uint64_t camera, const char* name);

// The definitions, with CameraCall.h.
#define ORVO_SIM_DEFINE_PARAMETER_TYPE(Prefix, Type, In, Out)                                                \
    int32_t Prefix##_set##Type##Value(uint64_t camera, const char* name, In value)                           \
    {                                                                                                        \
        return orvo::sim::setParameter(__func__, orvo::sim::ParameterType::Type, camera, name, value);       \
    }                                                                                                        \
    int32_t Prefix##_get##Type##Value(uint64_t camera, const char* name, Out* value)                         \
    {                                                                                                        \
        return orvo::sim::getParameter(__func__, orvo::sim::ParameterType::Type, camera, name, value);       \
    }

#define ORVO_SIM_DEFINE_PARAMETER_FUNCTIONS(Prefix)                                                          \
    ORVO_SIM_PARAMETER_TYPES(ORVO_SIM_DEFINE_PARAMETER_TYPE, Prefix)                                         \
    int32_t Prefix##_executeCommand(uint64_t camera, const char* name)                                       \
    {                                                                                                        \
        return orvo::sim::executeCommand(__func__, camera, name);                                            \
    }
// NOLINTEND(bugprone-macro-parentheses)

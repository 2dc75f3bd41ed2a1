#pragma once

#include <vector>

#include "sim/brdlib5/ParameterDescription.h"
#include "sim/json/JsonValue.h"

namespace orvo::sim {

/// Reads the parameters that an applet file lists. Throws JsonError with what is wrong and where.
std::vector<ParameterDescription> readParameters(const JsonValue& list);

}   // namespace orvo::sim

#pragma once

#include <cstdint>

namespace orvo::sim {

/// What a CameraStatus says to a person, for good; never null.
const char* cameraErrorTextOf(int32_t status);

}   // namespace orvo::sim

#pragma once

#include <cstdint>

#include "sim/cameras/ParameterSheet.h"
#include "sim/core/Camera.h"

namespace orvo::sim {

/// A camera of the boards file.
struct CameraDescription {
    uint32_t port = 0;
    CameraFamily family = CameraFamily::GenICam;
    CameraIdentity identity;
    ParameterSheet parameters;
    uint64_t vanishAfterCalls = 0;   // 0: it stays
};

}   // namespace orvo::sim

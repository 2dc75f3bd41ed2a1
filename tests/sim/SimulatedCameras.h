#pragma once

#include <cstdint>
#include <string>

#include "sim/ethlib/ethlib.h"
#include "sim/orvo_genicam/orvo_genicam.h"
#include "sim/seam/Camera.h"
#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

using sim::CameraStatus;

constexpr int32_t code(CameraStatus status)
{
    return static_cast<int32_t>(status);
}

/// The built-in boards, which have cameras, unless a test describes others; reached through both camera
/// libraries.
class SimulatedCameras : public SimulatedBoards {
protected:
    SimulatedCameras() { describeNothing(); }

    /// A library on an open board with a finished search.
    uint64_t openEth(int32_t boardIndex = 0);
    uint64_t openOgc(void* board);

    static uint64_t ethCamera(uint64_t library, uint32_t port);
    static uint64_t ogcCamera(uint64_t library, uint32_t position);
    uint64_t connectedEth(uint32_t port = 0);

    static int64_t integer(uint64_t camera, const char* name);
    static std::string text(uint64_t camera, const char* name);
    static std::string entry(uint64_t camera, const char* name);
};

}   // namespace orvo::test

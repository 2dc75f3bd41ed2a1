#pragma once

#include <string>

#include "sim/core/Camera.h"
#include "sim/ethlib/ethlib.h"
#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

using sim::CameraStatus;

constexpr int32_t code(CameraStatus status)
{
    return static_cast<int32_t>(status);
}

/// The built-in boards with their cameras, unless a test describes others.
class SimulatedCameras : public SimulatedBoards {
protected:
    SimulatedCameras() { useBoardsFile(""); }

    /// The library of the first board after a finished search, in a session that is begun if there is none.
    uint64_t searchedEth()
    {
        beginSession();
        uint64_t library = 0;
        EXPECT_EQ(0, Eth_openBoard(0, 0, &library));
        EXPECT_EQ(0, Eth_scanPorts(library, 0xFFFF'FFFF, 200));
        return library;
    }

    static uint64_t ethCamera(uint64_t library, uint32_t port)
    {
        uint64_t camera = 0;
        EXPECT_EQ(0, Eth_getCameraByIndex(library, port, 0, &camera));
        return camera;
    }

    uint64_t connectedEth(uint32_t port = 0)
    {
        const uint64_t camera = ethCamera(searchedEth(), port);
        EXPECT_EQ(0, Eth_connectCamera(camera));
        return camera;
    }
};

}   // namespace orvo::test

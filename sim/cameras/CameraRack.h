#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <utility>
#include <vector>

#include "sim/cameras/CameraDescription.h"
#include "sim/cameras/SimulatedCamera.h"

namespace orvo::sim {

/// All cameras by board and port. None is ever destroyed: whoever has found one may keep it. Threads: any.
class CameraRack {
public:
    /// A life begins.
    void unplugAll();
    void plugIn(uint32_t boardIndex, const CameraDescription& description);

    /// Null for a port without a described camera.
    SimulatedCamera* find(uint32_t boardIndex, uint32_t port) const;
    /// By rising port number.
    std::vector<SimulatedCamera*> camerasOf(uint32_t boardIndex) const;
    void bringAllBack();

private:
    mutable std::mutex m_mutex;
    std::map<std::pair<uint32_t, uint32_t>, SimulatedCamera*> m_cameras;
};

}   // namespace orvo::sim

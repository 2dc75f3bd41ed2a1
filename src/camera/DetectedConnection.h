#pragma once

#include <vector>

#include "camera/ConnectionStrategy.h"

namespace orvo::cognex {

/// Cameras that were found and not connected: they can be listed and not driven. For a family whose search
/// leaves cameras closed; both present ones open what they find.
/// Owns: the cameras, and disconnects none of them.
class DetectedConnection : public ConnectionStrategy {
public:
    void addCamera(std::shared_ptr<Camera> camera) { m_cameras.push_back(std::move(camera)); }
    /// Appends all of them and leaves the vector empty.
    void addCameras(std::vector<std::shared_ptr<Camera>>& cameras);

    uint64_t cameraCount() const override { return m_cameras.size(); }
    std::weak_ptr<Camera> camera(uint64_t index) const override;

private:
    std::vector<std::shared_ptr<Camera>> m_cameras;
};

}   // namespace orvo::cognex

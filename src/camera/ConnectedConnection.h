#pragma once

#include "camera/ConnectionStrategy.h"

namespace orvo::cognex {

/// One opened camera, the only kind that can be driven.
/// Owns: the camera, and its connection.
class ConnectedConnection : public ConnectionStrategy {
public:
    explicit ConnectedConnection(std::shared_ptr<Camera> camera);
    /// Disconnects the camera if nobody did, and drops its refusal.
    ~ConnectedConnection() override;

    uint64_t cameraCount() const override { return 1; }
    std::weak_ptr<Camera> camera(uint64_t index) const override;
    /// A camera that refuses is not asked again.
    void disconnect() override;

private:
    std::shared_ptr<Camera> m_camera;
    bool m_connected = true;
};

}   // namespace orvo::cognex

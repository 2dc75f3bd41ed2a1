#pragma once

#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace orvo::cognex {

class Camera;

/// How far a port has come with its cameras: none found, some found, or one connected. The port replaces it
/// as a whole.
/// Threads: host.
class ConnectionStrategy {
public:
    ConnectionStrategy() = default;
    ConnectionStrategy(const ConnectionStrategy&) = delete;
    ConnectionStrategy& operator=(const ConnectionStrategy&) = delete;
    virtual ~ConnectionStrategy() = default;

    virtual uint64_t cameraCount() const = 0;
    /// `index` counts from 0. Throws for any that is not below cameraCount().
    virtual std::weak_ptr<Camera> camera(uint64_t index) const = 0;

    /// Disconnects a connected camera, once. A call of its own, before the connection is destroyed, because a
    /// destructor can't report that the camera refuses.
    virtual void disconnect() {}
};

/// No search has been made, or it found nothing, or it failed.
class NoConnection : public ConnectionStrategy {
public:
    uint64_t cameraCount() const override { return 0; }
    std::weak_ptr<Camera> camera(uint64_t index) const override;
};

/// Cameras that were found and not connected: they can be listed, but not started or sized. For a family
/// whose search leaves cameras closed; both present families open what they find.
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

/// One opened camera: the only kind whose camera can be started, stopped and sized.
/// Owns: the camera, and its connection.
class ConnectedConnection : public ConnectionStrategy {
public:
    explicit ConnectedConnection(std::shared_ptr<Camera> camera);
    /// Disconnects the camera unless disconnect() has been called, and drops its refusal.
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

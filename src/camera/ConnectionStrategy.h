#pragma once

#include <cstdint>
#include <memory>

namespace orvo::cognex {

class Camera;

/// How far a port has come with its cameras: nothing found, some found, or one connected. The port replaces
/// it as a whole.
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

    /// Takes leave of a connected camera, once, before the connection is let go: a destructor could not
    /// report that the camera refuses.
    virtual void disconnect() {}
};

}   // namespace orvo::cognex

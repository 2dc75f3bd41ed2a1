#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "camera/ConnectionStrategy.h"

namespace orvo::cognex {

class Camera;

/// A camera input of a board. What can be done with its cameras depends on its connection.
/// Threads: host, no lock.
/// Owns:    the connection, and through it the camera.
/// Throws:  AIKException "No camera is connected" where an operation needs one, and what the camera throws.
class CamPort {
public:
    /// `portIndex` is what the camera library is asked for and what the host selects.
    explicit CamPort(int32_t portIndex);
    CamPort(const CamPort&) = delete;
    CamPort& operator=(const CamPort&) = delete;
    virtual ~CamPort() = default;

    /// Called once by the maker, before any other call.
    virtual void onCreated() {}

    // Passed on to the connected camera.
    virtual void startAcquisition();
    virtual void stopAcquisition();
    virtual void setWidth(uint32_t width);
    virtual void setHeight(uint32_t height);
    virtual void setReservedA(uint32_t value);
    virtual void setReservedB(uint32_t value);

    int32_t portIndex() const { return m_portIndex; }
    /// The family, as createCameraConfigurator() takes it. Unused: connectors make their own configurators.
    int32_t portType() const { return m_portType; }
    void setPortType(int32_t type) { m_portType = type; }

    /// Disconnects the camera, then searches again and keeps the first camera found. If the camera refuses to
    /// disconnect, it is lost, and no search is made. After any failure there is no connection.
    void update();
    /// Disconnects the camera and keeps none. Throws what the camera throws if it refuses, and loses it.
    void disconnect();

    std::shared_ptr<const ConnectionStrategy> connection() const { return m_connection; }
    bool isConnected() const;

protected:
    /// Searches, and opens what it finds.
    virtual std::vector<std::shared_ptr<Camera>> detect() = 0;
    void setConnection(std::shared_ptr<ConnectionStrategy> connection);

private:
    template <typename Action, typename... Arguments>
    void forward(Action action, Arguments... arguments);

    int32_t m_portIndex;
    int32_t m_portType = 0;
    std::shared_ptr<ConnectionStrategy> m_connection;   // never null
};

/// The opened camera. Throws AIKException if the connection has none.
std::weak_ptr<Camera> connectedCamera(const std::shared_ptr<const ConnectionStrategy>& connection);

}   // namespace orvo::cognex

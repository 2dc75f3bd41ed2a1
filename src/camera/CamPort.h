#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "camera/ConnectionStrategy.h"

namespace orvo::cognex {

class Camera;

/// A camera input of a board. What it can do with a camera is for its connection to say.
/// Threads: host, no lock.
/// Owns:    the connection, and through it the camera.
/// Throws:  AIKException "No camera is connected" where there is none to drive, and what the camera throws.
class CamPort {
public:
    /// `portIndex` is what the camera library is asked for and what the host selects.
    explicit CamPort(int32_t portIndex);
    CamPort(const CamPort&) = delete;
    CamPort& operator=(const CamPort&) = delete;
    virtual ~CamPort() = default;

    /// Called once by the maker, before any other call.
    virtual void onCreated() {}

    // Handed on to the connected camera.
    virtual void startAcquisition();
    virtual void stopAcquisition();
    virtual void setWidth(uint32_t width);
    virtual void setHeight(uint32_t height);
    virtual void setReservedA(uint32_t value);
    virtual void setReservedB(uint32_t value);

    int32_t portIndex() const { return m_portIndex; }
    /// The family, as createCameraConfigurator() takes it. Idle: connectors make their configurators.
    int32_t portType() const { return m_portType; }
    void setPortType(int32_t type) { m_portType = type; }

    /// Takes leave of the camera, then searches anew and keeps the first camera found. A camera that refuses
    /// to disconnect is lost, and nothing is searched then. After any failure there is no connection.
    void update();
    /// Takes leave of the camera and keeps none. Throws what a camera that refuses throws, and loses it.
    void disconnect();

    std::shared_ptr<const ConnectionStrategy> connection() const { return m_connection; }
    bool isConnected() const;

protected:
    /// Searches, and opens what it finds.
    virtual std::vector<std::shared_ptr<Camera>> detect() = 0;
    void setConnection(std::shared_ptr<ConnectionStrategy> connection);

private:
    template <typename Action, typename... Arguments>
    void drive(Action action, Arguments... arguments);

    int32_t m_portIndex;
    int32_t m_portType = 0;
    std::shared_ptr<ConnectionStrategy> m_connection;   // never null
};

/// The camera that can be driven. Throws AIKException if the connection is none of an opened camera.
std::weak_ptr<Camera> connectedCamera(const std::shared_ptr<const ConnectionStrategy>& connection);

}   // namespace orvo::cognex

#include "camera/ConnectedConnection.h"

#include <utility>

#include "AIKException.h"
#include "camera/Camera.h"

namespace orvo::cognex {

ConnectedConnection::ConnectedConnection(std::shared_ptr<Camera> camera) : m_camera(std::move(camera)) {}

ConnectedConnection::~ConnectedConnection()
{
    try {
        ConnectedConnection::disconnect();
    } catch (...) {   // the connection goes all the same, and there is nobody left to tell
    }
}

std::weak_ptr<Camera> ConnectedConnection::camera(uint64_t index) const
{
    if (index != 0)
        throw AIKException("Invalid camera index.");
    return m_camera;
}

void ConnectedConnection::disconnect()
{
    if (std::exchange(m_connected, false))
        m_camera->disconnect();
}

}   // namespace orvo::cognex

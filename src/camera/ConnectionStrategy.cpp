#include "camera/ConnectionStrategy.h"

#include <iterator>
#include <stdexcept>

#include "AIKException.h"
#include "camera/Camera.h"

namespace orvo::cognex {

std::weak_ptr<Camera> NoConnection::camera(uint64_t /*index*/) const
{
    throw AIKException("No camera connections.");
}

void DetectedConnection::addCameras(std::vector<std::shared_ptr<Camera>>& cameras)
{
    m_cameras.insert(m_cameras.end(), std::make_move_iterator(cameras.begin()),
                     std::make_move_iterator(cameras.end()));
    cameras.clear();
}

std::weak_ptr<Camera> DetectedConnection::camera(uint64_t index) const
{
    if (index >= m_cameras.size())
        throw std::out_of_range("invalid vector<T> subscript");   // deliberate: hosts compare this text
    return m_cameras[index];
}

ConnectedConnection::ConnectedConnection(std::shared_ptr<Camera> camera) : m_camera(std::move(camera)) {}

ConnectedConnection::~ConnectedConnection()
{
    try {
        ConnectedConnection::disconnect();
    } catch (...) {   // the connection ends all the same, and there is nobody left to tell
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

#include "camera/CamPort.h"

#include <utility>

#include "AIKException.h"
#include "camera/Camera.h"

namespace orvo::cognex {

CamPort::CamPort(int32_t portIndex) : m_portIndex(portIndex), m_connection(std::make_shared<NoConnection>())
{}

template <typename Action, typename... Arguments>
void CamPort::forward(Action action, Arguments... arguments)
{
    const auto connection = m_connection;   // kept for the call, whatever becomes of the port's own
    ((*locked(connectedCamera(connection))).*action)(arguments...);
}

void CamPort::startAcquisition()
{
    forward(&Camera::startAcquisition);
}

void CamPort::stopAcquisition()
{
    forward(&Camera::stopAcquisition);
}

void CamPort::setWidth(uint32_t width)
{
    forward(&Camera::setWidth, static_cast<int32_t>(width));
}

void CamPort::setHeight(uint32_t height)
{
    forward(&Camera::setHeight, static_cast<int32_t>(height));
}

void CamPort::setReservedA(uint32_t value)
{
    forward(&Camera::setReservedA, value);
}

void CamPort::setReservedB(uint32_t value)
{
    forward(&Camera::setReservedB, value);
}

void CamPort::update()
{
    disconnect();
    const auto cameras = detect();
    if (!cameras.empty())
        setConnection(std::make_shared<ConnectedConnection>(cameras.front()));
}

void CamPort::disconnect()
{
    std::exchange(m_connection, std::make_shared<NoConnection>())->disconnect();
}

bool CamPort::isConnected() const
{
    return dynamic_cast<const ConnectedConnection*>(m_connection.get()) != nullptr;
}

void CamPort::setConnection(std::shared_ptr<ConnectionStrategy> connection)
{
    m_connection = std::move(connection);
}

std::weak_ptr<Camera> connectedCamera(const std::shared_ptr<const ConnectionStrategy>& connection)
{
    const auto connected = std::dynamic_pointer_cast<const ConnectedConnection>(connection);
    if (!connected)
        throw AIKException("No camera is connected");
    return connected->camera(0);
}

}   // namespace orvo::cognex

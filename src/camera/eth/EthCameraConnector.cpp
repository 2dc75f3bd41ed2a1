#include "camera/eth/EthCameraConnector.h"

#include <stdexcept>

#include "AIKException.h"
#include "brdlib/AppletProcess.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/BoardWrapper.h"
#include "camera/eth/EthCamera.h"
#include "camera/eth/EthLibrary.h"

namespace orvo::cognex {

EthCameraConnector::EthCameraConnector()
    : CameraConnector(kEthLibrary, std::make_unique<EthCameraConfigurator>())
{
    merge(m_actionCommands.features());
    refreshState();
}

void EthCameraConnector::initialize()
{
    if (library() != 0)
        return;
    const int32_t boardIndex = locked(board())->index();
    uint64_t opened = 0;
    kEthLibrary.check(Eth_openBoard(boardIndex, 0, &opened));
    enterLibrary(opened);
    m_actionCommands.setBoardHandle(opened);
    createPorts(opened);
    refreshState();
}

void EthCameraConnector::createPorts(uint64_t library)
{
    const auto loaded = locked(applet());
    takeDownPorts();
    for (const auto& process : loaded->processes()) {
        const uint32_t count = process->camPortCount();
        for (uint32_t position = 0; position < count; ++position) {
            try {
                const auto number = static_cast<int32_t>(process->camIndex(position));
                const auto port = std::make_shared<EthCamPort>(number, library);
                port->onCreated();
                ports()[number] = port;
            } catch (...) {   // one port less is no reason to lose the others
            }
        }
    }
    storePortCount();
    refreshState();
}

void EthCameraConnector::detect()
{
    const auto count = static_cast<int32_t>(ports().size());
    for (int32_t number = 0; number < count; ++number) {
        const auto port = ports().find(number);
        if (port == ports().end())
            throw std::out_of_range(
                "invalid unordered_map<K, T> key");   // deliberate: hosts compare this text
        // First of all: update() ends the handle, and when it fails, no state is entered that would set it.
        m_actionCommands.forgetCameraOf(static_cast<uint32_t>(number));
        port->second->update();
    }
    refreshState();
}

void EthCameraConnector::close()
{
    if (library() == 0)
        throw AIKException("Eth camera connector is not initialized");
    leaveLibrary();
}

void EthCameraConnector::updateState(ConnectorState state)
{
    m_actionCommands.deactivate();
    m_actionCommands.setCameraHandle(0);
    CameraConnector::updateState(state);
    if (state != ConnectorState::CameraConnected)
        return;
    m_actionCommands.activate();
    m_actionCommands.setPortIndex(static_cast<uint32_t>(portIndex()));
    const auto camera = std::dynamic_pointer_cast<EthCamera>(selectedPort()->connection()->camera(0).lock());
    if (camera)
        m_actionCommands.setCameraHandle(camera->handle());
}

}   // namespace orvo::cognex

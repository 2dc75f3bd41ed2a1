#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "features/FeatureContainer.h"
#include "features/FeatureObserver.h"
#include "features/NumberFeature.h"

namespace orvo::cognex {

/// GigE Vision action commands: one message at which all cameras act whose device key is equal, whose group
/// key is equal and whose group mask has a bit in common. The "Local" features make and send such a message,
/// the "Remote" ones write the keys that it must meet into the connected camera.
/// Threads: host, no lock.
/// Throws:  AIKException "eth error code: N".
class EthActionCommands {
public:
    EthActionCommands();
    EthActionCommands(const EthActionCommands&) = delete;
    EthActionCommands& operator=(const EthActionCommands&) = delete;

    // Whom the calls are for: the open library, the connected camera, and the port that a message leaves by.
    void setBoardHandle(uint64_t library) { m_library = library; }
    void setCameraHandle(uint64_t camera) { m_camera = camera; }
    void setPortIndex(uint32_t portIndex) { m_portIndex = portIndex; }

    /// Makes all nine features available, and deactivate() none.
    void activate() { m_features->setAvailable(true); }
    void deactivate() { m_features->setAvailable(false); }
    std::weak_ptr<FeatureContainer> features() const { return m_features; }

    void send();
    /// Writes the device key, whichever of the three remote keys the host has written.
    void applyRemoteDeviceKey();
    /// Writes key and mask of the group; no mask after a key that the camera refuses.
    void applyGroupRemote();

private:
    using Number = NumberFeature<unsigned int>;

    std::shared_ptr<Number> addNumber(const char* name, const char* description);
    void addCommand(const char* name, const char* description, void (EthActionCommands::*execute)());
    void setRegister(const std::string& name, uint32_t value);

    uint64_t m_library = 0;
    uint64_t m_camera = 0;
    uint32_t m_portIndex = 0;

    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<Number> m_deviceKeyLocal;
    std::shared_ptr<Number> m_groupKeyLocal;
    std::shared_ptr<Number> m_groupMaskLocal;
    std::shared_ptr<Number> m_deviceKeyRemote;
    std::shared_ptr<Number> m_groupKeyRemote;
    std::shared_ptr<Number> m_groupMaskRemote;
    std::shared_ptr<Number> m_groupIndexRemote;
    std::shared_ptr<FeatureObserverCallback> m_remoteKeyObserver;
};

}   // namespace orvo::cognex

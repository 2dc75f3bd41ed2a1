#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "features/BasicFeatures.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

/// GigE Vision action commands: one message, on which every camera acts that has the same device key and group
/// key and a group mask with a bit in common. The "Local" features make up and send such a message; the
/// "Remote" features write the keys that it must match into the connected camera.
/// Threads: host, no lock.
/// Throws:  AIKException "eth error code: N".
class EthActionCommands {
public:
    EthActionCommands();
    EthActionCommands(const EthActionCommands&) = delete;
    EthActionCommands& operator=(const EthActionCommands&) = delete;

    // Where the calls go: the open library, the connected camera, and the port that sends a message.
    void setBoardHandle(uint64_t library) { m_library = library; }
    void setCameraHandle(uint64_t camera) { m_camera = camera; }
    void setPortIndex(uint32_t portIndex) { m_portIndex = portIndex; }
    /// The camera of that port is about to be destroyed. Until the next setCameraHandle(), register writes go
    /// to camera 0, which the library refuses. Another port changes nothing.
    void forgetCameraOf(uint32_t portIndex);

    /// Makes all nine features available; deactivate() makes them unavailable.
    void activate() { m_features->setAvailable(true); }
    void deactivate() { m_features->setAvailable(false); }
    std::weak_ptr<FeatureContainer> features() const { return m_features; }

    void send();
    /// Writes the device key: also when the host has written the remote group key or mask.
    void applyRemoteDeviceKey();
    /// Writes the key and the mask of the group; if the camera refuses the key, the mask is not written.
    void applyGroupRemote();

private:
    using Number = NumberFeature<unsigned int>;

    std::shared_ptr<Number> addNumber(const char* name, const char* description);
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

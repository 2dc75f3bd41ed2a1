#include "camera/eth/EthActionCommands.h"

#include "camera/eth/EthLibrary.h"
#include "features/NumberText.h"

namespace orvo::cognex {

namespace {

constexpr Access kConnectedReadWrite{.readable = true, .writeable = true, .available = false};

// In the library's own terms: to all cameras, and one register.
constexpr uint32_t kAllCameras = 0xFFFFFFFF;
constexpr uint32_t kOneRegister = 1;

}   // namespace

EthActionCommands::EthActionCommands() : m_features(std::make_shared<FeatureContainer>())
{
    m_deviceKeyLocal = addNumber("EthActionCommand_DeviceKeyLocal", "Device Key of the command");
    m_groupKeyLocal = addNumber("EthActionCommand_GroupKeyLocal", "Group Key of the command");
    m_groupMaskLocal = addNumber("EthActionCommand_GroupMaskLocal", "Group Mask of the command");
    addProxyCommand(*m_features, "EthActionCommand_Send", "Sends an ACTION command over selected port",
                    kConnectedReadWrite, *this, &EthActionCommands::send);
    m_deviceKeyRemote = addNumber("EthActionCommand_DeviceKeyRemote", "Device Key of the command");
    m_groupKeyRemote = addNumber("EthActionCommand_GroupKeyRemote", "Group Key of the command");
    m_groupMaskRemote = addNumber("EthActionCommand_GroupMaskRemote", "Group Mask of the command");
    m_groupIndexRemote = addNumber("EthActionCommand_GroupIndexRemote", "Group index of the command");
    addProxyCommand(*m_features, "EthActionCommand_ApplyGroupRemote",
                    "Applies the group configuration for the remote device.", kConnectedReadWrite, *this,
                    &EthActionCommands::applyGroupRemote);

    m_remoteKeyObserver = observe(*m_deviceKeyRemote, [this] { applyRemoteDeviceKey(); });
    m_groupKeyRemote->addObserver(m_remoteKeyObserver.get());
    m_groupMaskRemote->addObserver(m_remoteKeyObserver.get());
}

void EthActionCommands::forgetCameraOf(uint32_t portIndex)
{
    if (portIndex == m_portIndex)
        m_camera = 0;
}

void EthActionCommands::send()
{
    kEthLibrary.check(Eth_sendActionCommand(m_library, m_portIndex, kAllCameras, m_deviceKeyLocal->value(),
                                            m_groupKeyLocal->value(), m_groupMaskLocal->value()));
}

void EthActionCommands::applyRemoteDeviceKey()
{
    setRegister("actionDeviceKey", m_deviceKeyRemote->value());
}

void EthActionCommands::applyGroupRemote()
{
    const std::string group = toText(uint64_t{m_groupIndexRemote->value()});
    setRegister("actionGroupKey" + group, m_groupKeyRemote->value());
    setRegister("actionGroupMask" + group, m_groupMaskRemote->value());
}

std::shared_ptr<EthActionCommands::Number> EthActionCommands::addNumber(const char* name,
                                                                        const char* description)
{
    return addFeature<Number>(*m_features, name, description, kConnectedReadWrite);
}

void EthActionCommands::setRegister(const std::string& name, uint32_t value)
{
    kEthLibrary.check(Eth_setCameraRegister(m_camera, name.c_str(), &value, kOneRegister));
}

}   // namespace orvo::cognex

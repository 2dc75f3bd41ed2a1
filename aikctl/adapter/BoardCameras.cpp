#include "aikctl/adapter/BoardCameras.h"

#include <array>
#include <optional>
#include <stdexcept>
#include <utility>

namespace orvo::aikctl {

namespace {

constexpr const char* kBooleanValue = "CameraBooleanValue";

// One value feature for each kind of parameter: of these, only the one of the right kind can be read.
constexpr std::array kValues = {"CameraIntValue", "CameraFloatValue", kBooleanValue, "CameraEnumerationValue",
                                "CameraStringValue"};

/// What is read, or why it can't be.
struct Reading {
    std::optional<std::string> value;
    std::string failure;
};

Reading tryToRead(const aik::Channel& channel, const char* feature)
{
    try {
        return {channel.read(feature), ""};
    } catch (const aik::Error& failure) {
        return {std::nullopt, failure.what()};
    }
}

void writeBoolean(aik::Channel& channel, const std::string& name, const std::string& value)
{
    if (value != aik::kTrue && value != aik::kFalse)
        throw std::runtime_error(name + " is either " + aik::kTrue + " or " + aik::kFalse);
    channel.write(kBooleanValue, value == aik::kTrue);
}

// One key of each kind is enough: nobody else sends commands to these cameras.
constexpr const char* kDeviceKey = "1";
constexpr const char* kGroupKey = "1";
constexpr const char* kGroupMask = "1";
constexpr const char* kGroup = "0";

}   // namespace

BoardCameras::BoardCameras(BoardCameras&& other) noexcept
    : m_channel(other.m_channel),
      m_isOpen(std::exchange(other.m_isOpen, false)),
      m_ports(std::move(other.m_ports))
{}

BoardCameras::~BoardCameras()
{
    try {
        close();
    } catch (const std::exception&) {   // call close() to hear of it
    }
}

bool BoardCameras::connect()
{
    const bool isOurs = open();
    if (isOurs)
        detect();
    return isOurs;
}

bool BoardCameras::open()
{
    try {
        m_channel->execute("InitializeCameraConnector");
    } catch (const aik::Error& failure) {
        if (!failure.isFeatureUnavailable())
            throw;
        return false;
    }
    m_isOpen = true;
    return true;
}

void BoardCameras::detect()
{
    try {
        m_channel->execute("Detect");
    } catch (const aik::Error&) {
        findCameras();
        throw;
    }
    findCameras();
}

void BoardCameras::close()
{
    if (!std::exchange(m_isOpen, false))
        return;
    try {
        m_channel->execute("CloseCameraConnector");
    } catch (const aik::Error& failure) {
        if (!failure.isFeatureUnavailable())   // otherwise it was closed before
            throw;
    }
}

void BoardCameras::findCameras()
{
    const auto count = tryToRead(*m_channel, "PortCount").value;
    if (!count)
        return;   // there is no port
    for (int32_t port = 0; port < std::stoi(*count); ++port) {
        try {
            select(port);
        } catch (const aik::Error&) {
            continue;   // a gap in the numbers
        }
        if (tryToRead(*m_channel, "CameraName").value)
            m_ports.push_back(port);
    }
    if (!m_ports.empty())
        select(m_ports.front());
}

void BoardCameras::select(int32_t port)
{
    m_channel->write("PortIndex", port);
}

void BoardCameras::startAll()
{
    for (const int32_t port : m_ports) {
        select(port);
        m_channel->execute("StartAcquisition");
    }
}

void BoardCameras::stopAll()
{
    for (const int32_t port : m_ports) {
        select(port);
        m_channel->execute("StopAcquisition");
    }
}

void BoardCameras::setParameter(const std::string& name, const std::string& value)
{
    m_channel->write("CameraFeatureKey", name);
    std::string failure;
    for (const char* const feature : kValues) {
        Reading reading = tryToRead(*m_channel, feature);
        if (reading.value) {
            if (feature == kBooleanValue)
                writeBoolean(*m_channel, name, value);
            else
                m_channel->write(feature, value);
            return;
        }
        failure = std::move(reading.failure);
    }
    throw aik::Error(failure);
}

bool BoardCameras::knowsActionCommands() const
{
    try {
        m_channel->feature("EthActionCommand_Send");
        return true;
    } catch (const aik::Error&) {
        return false;
    }
}

void BoardCameras::armForActionCommands()
{
    for (const int32_t port : m_ports) {
        select(port);
        setParameter("TriggerMode", "On");
        setParameter("TriggerSource", "Action0");
        m_channel->write("EthActionCommand_DeviceKeyRemote", kDeviceKey);
        m_channel->write("EthActionCommand_GroupKeyRemote", kGroupKey);
        m_channel->write("EthActionCommand_GroupMaskRemote", kGroupMask);
        m_channel->write("EthActionCommand_GroupIndexRemote", kGroup);
        m_channel->execute("EthActionCommand_ApplyGroupRemote");
    }
    m_channel->write("EthActionCommand_DeviceKeyLocal", kDeviceKey);
    m_channel->write("EthActionCommand_GroupKeyLocal", kGroupKey);
    m_channel->write("EthActionCommand_GroupMaskLocal", kGroupMask);
}

void BoardCameras::sendActionCommand()
{
    m_channel->execute("EthActionCommand_Send");
}

}   // namespace orvo::aikctl

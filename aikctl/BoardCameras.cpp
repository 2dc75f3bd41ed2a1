#include "aikctl/BoardCameras.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "aikctl/AdapterFailure.h"
#include "aikctl/FeatureText.h"

namespace orvo::aikctl {

namespace {

constexpr const char* kBooleanValue = "CameraBooleanValue";

// The value features, one for each kind of parameter: only that of its kind can be read.
constexpr std::array kValues = {"CameraIntValue", "CameraFloatValue", kBooleanValue, "CameraEnumerationValue",
                                "CameraStringValue"};

/// What is read, or why it can't be.
struct Reading {
    std::optional<std::string> value;
    std::string failure;
};

Reading tryToRead(const Channel& channel, const char* feature)
{
    try {
        return {channel.read(feature), ""};
    } catch (const AdapterFailure& failure) {
        return {std::nullopt, failure.what()};
    }
}

/// The adapter takes booleans crosswise: "True" switches off, and any other text on.
std::string crosswise(const std::string& name, const std::string& value)
{
    if (value != kTrue && value != kFalse)
        throw std::runtime_error(name + " is either " + kTrue + " or " + kFalse);
    return value == kTrue ? kFalse : kTrue;
}

// One key of each kind is enough for commands that only this program sends.
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
    } catch (const std::exception&) {   // whoever wants to know has closed before
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
    } catch (const AdapterFailure& failure) {
        if (!saysNotAvailable(failure.what()))
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
    } catch (const AdapterFailure&) {
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
    } catch (const AdapterFailure& failure) {
        if (!saysNotAvailable(failure.what()))   // or else somebody has closed it before
            throw;
    }
}

void BoardCameras::findCameras()
{
    const auto count = tryToRead(*m_channel, "PortCount").value;
    if (!count)
        return;   // there is no port at all
    for (int32_t port = 0; port < std::stoi(*count); ++port) {
        try {
            select(port);
        } catch (const AdapterFailure&) {
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
    m_channel->write("PortIndex", std::to_string(port));
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
            m_channel->write(feature, feature == kBooleanValue ? crosswise(name, value) : value);
            return;
        }
        failure = std::move(reading.failure);
    }
    throw AdapterFailure(failure);
}

bool BoardCameras::knowsActionCommands() const
{
    try {
        m_channel->featureType("EthActionCommand_Send");
        return true;
    } catch (const AdapterFailure&) {
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

#include "aikctl/adapter/BoardCameras.h"

#include <optional>
#include <ranges>
#include <stdexcept>
#include <utility>

#include "aikctl/adapter/Parameters.h"

namespace orvo::aikctl {

namespace {

std::optional<std::string> tryToRead(const aik::Channel& channel, const char* feature)
{
    try {
        return channel.read(feature);
    } catch (const aik::Error&) {
        return std::nullopt;
    }
}

// One key of each kind is enough: nobody else sends commands to these cameras.
constexpr const char* kDeviceKey = "1";
constexpr const char* kGroupKey = "1";
constexpr const char* kGroupMask = "1";
constexpr const char* kGroup = "0";

constexpr std::chrono::milliseconds kQuietTime{500};   // without a picture before a camera is started

}   // namespace

std::string placeOf(const aik::Channel& channel)
{
    return "channel " + std::to_string(channel.index());
}

std::string placeOf(const aik::Channel& channel, const CameraPort& port)
{
    return placeOf(channel) + ", port " + std::to_string(port.number);
}

bool concernsSelectedCamera(const std::string& feature)
{
    return feature.starts_with("Camera") || feature.ends_with("Remote") || feature == "StartAcquisition" ||
           feature == "StopAcquisition";
}

BoardCameras::BoardCameras(BoardCameras&& other) noexcept
    : m_channel(other.m_channel),
      m_isOpen(std::exchange(other.m_isOpen, false)),
      m_ports(std::move(other.m_ports)),
      m_before(std::move(other.m_before))
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
    } catch (const aik::Error& failure) {
        findCameras();
        throw std::runtime_error(failure.what() + portsNotSearched());
    }
    findCameras();
}

void BoardCameras::close()
{
    if (!std::exchange(m_isOpen, false))
        return;
    const std::string failure = restoreTriggers();
    try {
        m_channel->execute("CloseCameraConnector");
    } catch (const aik::Error& refusal) {
        if (!refusal.isFeatureUnavailable())   // otherwise it was closed before
            throw;
    }
    if (!failure.empty())
        throw std::runtime_error(failure);
}

/// Returns what was refused last; empty for nothing.
std::string BoardCameras::restoreTriggers()
{
    std::string failure;
    for (const Setting& setting : std::ranges::reverse_view(m_before)) {
        try {
            select(setting.port);
            setParameter(setting.name, setting.value);
        } catch (const std::exception& refusal) {
            failure = "port " + std::to_string(setting.port) + ": " + setting.name + "=" + setting.value +
                      ": " + refusal.what();
        }
    }
    m_before.clear();
    return failure;
}

void BoardCameras::findCameras()
{
    const auto count = tryToRead(*m_channel, "PortCount");
    if (!count)
        return;   // there is no port
    for (int32_t port = 0; port < std::stoi(*count); ++port) {
        try {
            select(port);
        } catch (const aik::Error&) {
            continue;   // a gap in the numbers
        }
        if (auto name = tryToRead(*m_channel, "CameraName"))
            m_ports.push_back({port, std::move(*name)});
    }
    if (!m_ports.empty())
        select(m_ports.front().number);
}

/// Ports are searched by rising number, up to the first that refuses. Which one that is, the adapter doesn't
/// say: ports without a camera may come before it.
std::string BoardCameras::portsNotSearched() const
{
    const auto count = tryToRead(*m_channel, "PortCount");
    const int32_t first = m_ports.empty() ? 0 : m_ports.back().number + 1;
    const int32_t last = count ? std::stoi(*count) - 1 : first;
    if (!knowsActionCommands() || first > last)
        return "";
    if (first == last)
        return " (port " + std::to_string(first) + " refuses)";
    return " (port " + std::to_string(first) + (first + 1 == last ? " or " : " to ") + std::to_string(last) +
           " refuses, and those after it were not searched)";
}

void BoardCameras::select(int32_t port)
{
    m_channel->write("PortIndex", port);
}

std::string BoardCameras::describePorts() const
{
    std::string all = m_ports.size() == 1 ? "port " : "ports ";
    for (const CameraPort& port : m_ports) {
        if (&port != &m_ports.front())
            all += &port == &m_ports.back() ? " and " : ", ";
        all += std::to_string(port.number);
    }
    return all;
}

std::optional<int32_t> BoardCameras::probe(std::chrono::duration<double> patience)
{
    m_channel->setup();
    m_channel->start();
    std::optional<int32_t> found;
    try {
        if (waitForPicture(kQuietTime))
            throw std::runtime_error(placeOf(*m_channel) +
                                     ": pictures come before a camera is started, so starting one after the "
                                     "other can't tell which one feeds the channel");
        for (const CameraPort& port : m_ports) {
            select(port.number);
            start();
            const bool isFeeding = waitForPicture(patience);
            stop();
            if (isFeeding) {
                found = port.number;
                break;
            }
        }
    } catch (...) {
        m_channel->stop();
        throw;
    }
    m_channel->stop();
    return found;
}

bool BoardCameras::waitForPicture(std::chrono::duration<double> patience)
{
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(patience);
    while (Clock::now() < deadline)
        if (m_channel->grab())
            return true;
    return false;
}

Written BoardCameras::setParameter(const std::string& name, const std::string& value)
{
    return writeParameter(*m_channel, kCameraParameters, name, value);
}

std::optional<int64_t> BoardCameras::integerParameter(const std::string& name)
{
    const auto parameter = readParameter(*m_channel, kCameraParameters, name);
    if (!parameter || parameter->by->kind != kIntegerKind)
        return std::nullopt;
    return aik::fromText<int64_t>(parameter->value);
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
    const auto port = m_channel->read<int32_t>("PortIndex");
    const auto change = [&](const std::string& name, const std::string& value) {
        if (const auto before = readParameter(*m_channel, kCameraParameters, name))
            m_before.push_back({port, name, before->value});
        setParameter(name, value);
    };
    change("TriggerMode", "On");
    change("TriggerSource", "Action0");
    for (const char* const side : {"Local", "Remote"}) {
        m_channel->write(std::string("EthActionCommand_DeviceKey") + side, kDeviceKey);
        m_channel->write(std::string("EthActionCommand_GroupKey") + side, kGroupKey);
        m_channel->write(std::string("EthActionCommand_GroupMask") + side, kGroupMask);
    }
    m_channel->write("EthActionCommand_GroupIndexRemote", kGroup);
    m_channel->execute("EthActionCommand_ApplyGroupRemote");
}

bool BoardCameras::sendActionCommand()
{
    if (m_ports.empty() || !knowsActionCommands())
        return false;
    m_channel->execute("EthActionCommand_Send");
    return true;
}

}   // namespace orvo::aikctl

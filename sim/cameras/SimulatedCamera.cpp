#include "sim/cameras/SimulatedCamera.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <new>
#include <system_error>

namespace orvo::sim {

namespace {

constexpr uint32_t kMostActionGroups = 128;

/// The group number behind a register's name, nothing if there is none.
std::optional<uint32_t> groupNumberOf(std::string_view name, std::string_view prefix)
{
    if (!name.starts_with(prefix))
        return std::nullopt;
    const std::string_view digits = name.substr(prefix.size());
    uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isPlain =
        error == std::errc{} && end == digits.data() + digits.size() && std::to_string(number) == digits;
    return isPlain && number < kMostActionGroups ? std::optional(number) : std::nullopt;
}

}   // namespace

const SimulatedCamera::CommandRow SimulatedCamera::kCommands[] = {
    {"AcquisitionStart", &SimulatedCamera::start},  {"AcquisitionStop", &SimulatedCamera::halt},
    {"TriggerSoftware", &SimulatedCamera::trigger}, {"UserSetLoad", &SimulatedCamera::loadUserSet},
    {"UserSetSave", &SimulatedCamera::saveUserSet}, {"DeviceReset", &SimulatedCamera::reset},
};

void SimulatedCamera::plugIn(const CameraDescription& description)
{
    const std::lock_guard lock(m_mutex);
    m_description = description;
    m_userSet.reset();
    m_isGone = false;
    m_callsLeft =
        description.vanishAfterCalls > 0 ? std::optional(description.vanishAfterCalls) : std::nullopt;
    switchOn();
}

void SimulatedCamera::unplug()
{
    const std::lock_guard lock(m_mutex);
    m_description.reset();
    m_connected.clear();
}

void SimulatedCamera::switchOn()
{
    m_parameters = m_description->parameters;
    m_connected.clear();
    m_isStarted = false;
    m_actionDeviceKey = 0;
    m_actionGroups.clear();
}

bool SimulatedCamera::isDescribed() const
{
    const std::lock_guard lock(m_mutex);
    return m_description.has_value();
}

void SimulatedCamera::vanishAfter(uint64_t calls)
{
    const std::lock_guard lock(m_mutex);
    m_callsLeft = calls;
    m_isGone = calls == 0;
}

void SimulatedCamera::comeBack()
{
    const std::lock_guard lock(m_mutex);
    m_callsLeft.reset();
    if (m_isGone && m_description)
        switchOn();
    m_isGone = false;
}

void SimulatedCamera::act(const ActionCommand& command)
{
    const std::lock_guard lock(m_mutex);
    if (m_description && !m_isGone && obeys(command))
        trigger();
}

bool SimulatedCamera::obeys(const ActionCommand& command) const
{
    if (m_actionDeviceKey != command.deviceKey)
        return false;
    return std::any_of(m_actionGroups.begin(), m_actionGroups.end(), [&](const auto& entry) {
        return entry.second.key == command.groupKey && (entry.second.mask & command.groupMask) != 0;
    });
}

bool SimulatedCamera::isPresent() const
{
    const std::lock_guard lock(m_mutex);
    return m_description && !m_isGone;
}

bool SimulatedCamera::isConnected() const
{
    const std::lock_guard lock(m_mutex);
    return !m_connected.empty();
}

/// A call that reaches the camera if it is there.
template <typename Action>
CameraStatus SimulatedCamera::called(Action action)
{
    const std::lock_guard lock(m_mutex);
    if (m_callsLeft && *m_callsLeft == 0)
        m_isGone = true;
    if (!m_description || m_isGone)
        return CameraStatus::Gone;
    if (m_callsLeft)
        --*m_callsLeft;
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return CameraStatus::InternalFault;
    }
}

/// A call of somebody who must have connected the camera.
template <typename Action>
CameraStatus SimulatedCamera::calledBy(uint64_t handle, Action action)
{
    return called([&] { return m_connected.contains(handle) ? action() : CameraStatus::NotConnected; });
}

CameraStatus SimulatedCamera::identify(CameraIdentity& identity)
{
    return called([&] {
        identity = m_description->identity;
        return CameraStatus::Ok;
    });
}

CameraStatus SimulatedCamera::connect(uint64_t handle, bool alone)
{
    return called([&] {
        if (alone && !m_connected.empty() && !m_connected.contains(handle))
            return CameraStatus::InUse;
        if (m_connected.empty())   // cameras behind a frame grabber's own link send from then on
            m_isStarted = m_description->family == CameraFamily::GenICam;
        m_connected.insert(handle);
        return CameraStatus::Ok;
    });
}

CameraStatus SimulatedCamera::disconnect(uint64_t handle)
{
    return calledBy(handle, [&] {
        drop(handle);
        return CameraStatus::Ok;
    });
}

void SimulatedCamera::forget(uint64_t handle)
{
    const std::lock_guard lock(m_mutex);
    drop(handle);
}

void SimulatedCamera::drop(uint64_t handle)
{
    m_connected.erase(handle);
    if (m_connected.empty())
        m_isStarted = false;
}

CameraStatus SimulatedCamera::setStarted(uint64_t handle, bool started)
{
    return calledBy(handle, [&] { return started ? start() : halt(); });
}

CameraStatus SimulatedCamera::read(uint64_t handle, const char* name, ParameterType type,
                                   ParameterValue& value)
{
    return calledBy(handle, [&] { return m_parameters.read(name, type, value); });
}

CameraStatus SimulatedCamera::write(uint64_t handle, const char* name, ParameterType type,
                                    const ParameterValue& value)
{
    return calledBy(handle, [&] { return m_parameters.write(name, type, value); });
}

CameraStatus SimulatedCamera::execute(uint64_t handle, const char* name)
{
    return calledBy(handle, [&] {
        const auto* const row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                             [&](const CommandRow& command) { return command.name == name; });
        if (row != std::end(kCommands))
            return (this->*row->order)();
        return m_parameters.find(name) ? CameraStatus::WrongType : CameraStatus::UnknownParameter;
    });
}

CameraStatus SimulatedCamera::writeRegister(uint64_t handle, const char* name, uint32_t value)
{
    return calledBy(handle, [&] {
        uint32_t* const cell = registerOf(name);
        if (!cell)
            return CameraStatus::UnknownRegister;
        *cell = value;
        return CameraStatus::Ok;
    });
}

uint32_t* SimulatedCamera::registerOf(std::string_view name)
{
    if (name == "actionDeviceKey")
        return &m_actionDeviceKey;
    if (const auto number = groupNumberOf(name, "actionGroupKey"))
        return &m_actionGroups[*number].key;
    if (const auto number = groupNumberOf(name, "actionGroupMask"))
        return &m_actionGroups[*number].mask;
    return nullptr;
}

CameraStatus SimulatedCamera::start()
{
    m_isStarted = true;
    return CameraStatus::Ok;
}

CameraStatus SimulatedCamera::halt()
{
    m_isStarted = false;
    return CameraStatus::Ok;
}

CameraStatus SimulatedCamera::trigger()
{
    return CameraStatus::Ok;
}

CameraStatus SimulatedCamera::loadUserSet()
{
    const bool isDefault = m_parameters.text("UserSetSelector") == "Default";
    m_parameters = !isDefault && m_userSet ? *m_userSet : m_description->parameters;
    return CameraStatus::Ok;
}

CameraStatus SimulatedCamera::saveUserSet()
{
    if (m_parameters.text("UserSetSelector") == "Default")
        return CameraStatus::NotWritable;
    m_userSet = m_parameters;
    return CameraStatus::Ok;
}

CameraStatus SimulatedCamera::reset()
{
    const bool wasStarted = m_isStarted && m_description->family == CameraFamily::GenICam;
    const std::set<uint64_t> connected = m_connected;
    switchOn();
    m_connected = connected;
    m_isStarted = wasStarted;
    return CameraStatus::Ok;
}

}   // namespace orvo::sim

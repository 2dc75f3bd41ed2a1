#include "sim/simulator/SimulatedCamera.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cmath>
#include <iterator>
#include <new>
#include <system_error>

namespace orvo::sim {

namespace {

constexpr uint32_t kMostActionGroups = 128;

/// The group number at the end of a register's name; nothing if there is none.
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

struct PatternRow {
    std::string_view name;
    CameraPattern pattern;
};

constexpr PatternRow kPatterns[] = {
    {"Off", CameraPattern::Scene},
    {"Black", CameraPattern::Black},
    {"White", CameraPattern::White},
    {"GreyHorizontalRamp", CameraPattern::HorizontalRamp},
    {"GreyVerticalRamp", CameraPattern::VerticalRamp},
    {"GreyHorizontalRampMoving", CameraPattern::HorizontalRampMoving},
    {"GreyVerticalRampMoving", CameraPattern::VerticalRampMoving},
    {"GreyDiagonalRampMoving", CameraPattern::DiagonalRampMoving},
    {"ColorBar", CameraPattern::ColorBar},
};

// At which the scene looks as it is.
constexpr double kNeutralExposure = 10'000;   // microseconds
constexpr double kDecibelsPerDecade = 20;

}   // namespace

class SimulatedCamera::Stream final : public CameraStream {
public:
    explicit Stream(SimulatedCamera& camera) : m_camera(camera), m_schedule(ExposureSchedule::Clock::now()) {}

    /// The caller holds the camera's mutex. Not analysed: there the mutex has another name.
    void trigger(ExposureSchedule::Time time) ORVO_NO_THREAD_SAFETY_ANALYSIS { m_schedule.trigger(time); }

    bool await(Exposure& exposure) override
    {
        os::MutexLock lock(m_camera.m_mutex);
        while (!m_isCancelled) {
            const auto now = ExposureSchedule::Clock::now();
            const auto due = m_schedule.due(pace(), now);
            if (!due) {
                m_camera.m_changed.wait(lock.native());
            } else if (*due > now) {
                m_camera.m_changed.wait_until(lock.native(), *due);
            } else {
                const auto time = m_schedule.take().time_since_epoch();
                exposure.timeNs = std::chrono::duration_cast<std::chrono::nanoseconds>(time).count();
                exposure.view = m_camera.currentView();
                return true;
            }
        }
        return false;
    }

    void cancel() override
    {
        const os::MutexLock lock(m_camera.m_mutex);
        m_isCancelled = true;
        m_camera.m_changed.notify_all();
    }

    void close() override
    {
        {
            const os::MutexLock lock(m_camera.m_mutex);
            m_camera.m_streams.erase(this);
        }
        delete this;
    }

private:
    ExposureSchedule::Pace pace() const ORVO_REQUIRES(m_camera.m_mutex)
    {
        using Seconds = std::chrono::duration<double>;
        if (!m_camera.isSending())
            return {};
        const auto period =
            std::chrono::duration_cast<std::chrono::nanoseconds>(Seconds(1 / m_camera.freeRate()));
        return {true, m_camera.isTriggered(), period};
    }

    SimulatedCamera& m_camera;
    ExposureSchedule m_schedule ORVO_GUARDED_BY(m_camera.m_mutex);
    bool m_isCancelled ORVO_GUARDED_BY(m_camera.m_mutex) = false;
};

const SimulatedCamera::CommandRow SimulatedCamera::kCommands[] = {
    {"AcquisitionStart", &SimulatedCamera::start},
    {"AcquisitionStop", &SimulatedCamera::halt},
    {"TriggerSoftware", &SimulatedCamera::triggerBySoftware},
    {"UserSetLoad", &SimulatedCamera::loadUserSet},
    {"UserSetSave", &SimulatedCamera::saveUserSet},
    {"DeviceReset", &SimulatedCamera::reset},
};

void SimulatedCamera::plugIn(const CameraDescription& description)
{
    const os::MutexLock lock(m_mutex);
    m_description = description;
    m_isDescribed = true;
    m_userSet.reset();
    m_isGone = false;
    m_callsLeft =
        description.vanishAfterCalls > 0 ? std::optional(description.vanishAfterCalls) : std::nullopt;
    switchOn();
}

void SimulatedCamera::unplug()
{
    const os::MutexLock lock(m_mutex);
    m_isDescribed = false;
    m_connected.clear();
    m_changed.notify_all();
}

void SimulatedCamera::switchOn()
{
    m_parameters = m_description.parameters;
    m_connected.clear();
    m_isStarted = false;
    m_actionDeviceKey = 0;
    m_actionGroups.clear();
    m_changed.notify_all();
}

bool SimulatedCamera::isDescribed() const
{
    const os::MutexLock lock(m_mutex);
    return m_isDescribed;
}

void SimulatedCamera::vanishAfter(uint64_t calls)
{
    const os::MutexLock lock(m_mutex);
    m_callsLeft = calls;
    m_isGone = calls == 0;
    m_changed.notify_all();
}

void SimulatedCamera::comeBack()
{
    const os::MutexLock lock(m_mutex);
    m_callsLeft.reset();
    if (m_isGone && m_isDescribed)
        switchOn();
    m_isGone = false;
}

void SimulatedCamera::act(const ActionCommand& command, ExposureSchedule::Time time)
{
    const os::MutexLock lock(m_mutex);
    if (isSending() && obeys(command))
        trigger(time);
}

/// Each stream gets a picture. Without the mode, or without a stream, nothing happens.
void SimulatedCamera::trigger(ExposureSchedule::Time time)
{
    if (!isTriggered())
        return;
    for (Stream* const stream : m_streams)
        stream->trigger(time);
    m_changed.notify_all();
}

bool SimulatedCamera::isSending() const
{
    return m_isDescribed && !m_isGone && m_isStarted && !m_connected.empty();
}

bool SimulatedCamera::isTriggered() const
{
    return m_parameters.text("TriggerMode") == "On";
}

/// The asked rate, as far as the exposure leaves room for it.
double SimulatedCamera::freeRate() const
{
    const double fastest = 1e6 / m_parameters.real("ExposureTime");
    return m_parameters.integer("AcquisitionFrameRateEnable")
               ? std::min(fastest, m_parameters.real("AcquisitionFrameRate"))
               : fastest;
}

CameraView SimulatedCamera::currentView() const
{
    const auto pixels = [&](const char* name) ORVO_REQUIRES(m_mutex) {
        return static_cast<uint32_t>(m_parameters.integer(name));
    };
    CameraView view;
    view.width = pixels("Width");
    view.height = pixels("Height");
    view.xOffset = pixels("OffsetX");
    view.yOffset = pixels("OffsetY");
    view.sensorWidth = pixels("WidthMax");
    const std::string& pattern = m_parameters.text("TestPattern");
    view.pattern = std::find_if(std::begin(kPatterns), std::end(kPatterns), [&](const PatternRow& row) {
                       return row.name == pattern;
                   })->pattern;
    view.isGrey = m_parameters.text("PixelFormat").starts_with("Mono");
    view.isReversedX = m_parameters.integer("ReverseX") != 0;
    view.isReversedY = m_parameters.integer("ReverseY") != 0;
    view.brightness = m_parameters.real("ExposureTime") / kNeutralExposure *
                      std::pow(10, m_parameters.real("Gain") / kDecibelsPerDecade);
    return view;
}

CameraStream* SimulatedCamera::openStream()
{
    auto* const stream = new Stream(*this);
    const os::MutexLock lock(m_mutex);
    m_streams.insert(stream);
    return stream;
}

CameraView SimulatedCamera::view() const
{
    const os::MutexLock lock(m_mutex);
    return currentView();
}

double SimulatedCamera::pictureRate() const
{
    const os::MutexLock lock(m_mutex);
    return isTriggered() ? 0 : freeRate();
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
    const os::MutexLock lock(m_mutex);
    return m_isDescribed && !m_isGone;
}

bool SimulatedCamera::isConnected() const
{
    const os::MutexLock lock(m_mutex);
    return !m_connected.empty();
}

/// A call that reaches the camera if it is there.
template <typename Action>
CameraStatus SimulatedCamera::called(Action action)
{
    const os::MutexLock lock(m_mutex);
    if (m_callsLeft && *m_callsLeft == 0)
        m_isGone = true;
    m_changed.notify_all();   // whatever the call does: streams look for themselves
    if (!m_isDescribed || m_isGone)
        return CameraStatus::Gone;
    if (m_callsLeft)
        --*m_callsLeft;
    try {
        return action();
    } catch (const std::bad_alloc&) {
        return CameraStatus::InternalFault;
    }
}

/// A call by a handle that must have connected the camera.
template <typename Action>
CameraStatus SimulatedCamera::calledBy(uint64_t handle, Action action)
{
    return called([&]() ORVO_REQUIRES(m_mutex) {
        return m_connected.contains(handle) ? action() : CameraStatus::NotConnected;
    });
}

CameraStatus SimulatedCamera::identify(CameraIdentity& identity)
{
    return called([&]() ORVO_REQUIRES(m_mutex) {
        identity = m_description.identity;
        return CameraStatus::Ok;
    });
}

CameraStatus SimulatedCamera::connect(uint64_t handle, bool alone)
{
    return called([&]() ORVO_REQUIRES(m_mutex) {
        if (alone && !m_connected.empty() && !m_connected.contains(handle))
            return CameraStatus::InUse;
        if (m_connected.empty())
            m_isStarted = m_description.family->sendsOnceConnected;
        m_connected.insert(handle);
        return CameraStatus::Ok;
    });
}

CameraStatus SimulatedCamera::disconnect(uint64_t handle)
{
    return calledBy(handle, [&]() ORVO_REQUIRES(m_mutex) {
        drop(handle);
        return CameraStatus::Ok;
    });
}

void SimulatedCamera::forget(uint64_t handle)
{
    const os::MutexLock lock(m_mutex);
    drop(handle);
    m_changed.notify_all();
}

void SimulatedCamera::drop(uint64_t handle)
{
    m_connected.erase(handle);
    if (m_connected.empty())
        m_isStarted = false;
}

CameraStatus SimulatedCamera::setStarted(uint64_t handle, bool started)
{
    return calledBy(handle, [&]() ORVO_REQUIRES(m_mutex) { return started ? start() : halt(); });
}

CameraStatus SimulatedCamera::read(uint64_t handle, const char* name, ParameterType type,
                                   ParameterValue& value)
{
    return calledBy(handle, [&]() ORVO_REQUIRES(m_mutex) { return m_parameters.read(name, type, value); });
}

CameraStatus SimulatedCamera::write(uint64_t handle, const char* name, ParameterType type,
                                    const ParameterValue& value)
{
    return calledBy(handle, [&]() ORVO_REQUIRES(m_mutex) { return m_parameters.write(name, type, value); });
}

CameraStatus SimulatedCamera::execute(uint64_t handle, const char* name)
{
    return calledBy(handle, [&]() ORVO_REQUIRES(m_mutex) {
        const auto* const row = std::find_if(std::begin(kCommands), std::end(kCommands),
                                             [&](const CommandRow& command) { return command.name == name; });
        if (row != std::end(kCommands))
            return (this->*row->order)();
        return m_parameters.find(name) ? CameraStatus::WrongType : CameraStatus::UnknownParameter;
    });
}

CameraStatus SimulatedCamera::writeRegister(uint64_t handle, const char* name, uint32_t value)
{
    return calledBy(handle, [&]() ORVO_REQUIRES(m_mutex) {
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

CameraStatus SimulatedCamera::triggerBySoftware()
{
    if (isSending() && m_parameters.text("TriggerSource") == "Software")
        trigger(ExposureSchedule::Clock::now());
    return CameraStatus::Ok;
}

CameraStatus SimulatedCamera::loadUserSet()
{
    const bool isDefault = m_parameters.text("UserSetSelector") == "Default";
    m_parameters = !isDefault && m_userSet ? *m_userSet : m_description.parameters;
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
    const bool wasStarted = m_isStarted && m_description.family->sendsOnceConnected;
    const std::set<uint64_t> connected = m_connected;
    switchOn();
    m_connected = connected;
    m_isStarted = wasStarted;
    return CameraStatus::Ok;
}

}   // namespace orvo::sim

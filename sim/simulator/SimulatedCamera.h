#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "os/ThreadSafety.h"
#include "sim/seam/Camera.h"
#include "sim/simulator/ExposureSchedule.h"
#include "sim/simulator/ParameterSheet.h"

namespace orvo::sim {

/// A camera of the boards file.
struct CameraDescription {
    uint32_t port = 0;
    const CameraFamily* family = &kGenICam;
    CameraIdentity identity;
    ParameterSheet parameters;
    uint64_t vanishAfterCalls = 0;   // 0: it stays
};

/// The camera at one port of a board, for all sessions. Threads: any.
class SimulatedCamera final : public Camera {
public:
    /// A session begins: the camera is switched on as the boards file describes it, or not there at all.
    void plugIn(const CameraDescription& description);
    void unplug();
    /// Whether the boards file describes it.
    bool isDescribed() const;

    /// This many more calls reach it, then it is gone; 0: it is gone now.
    void vanishAfter(uint64_t calls);
    /// Back again, as after a loss of power: not connected, with the initial parameters.
    void comeBack();

    /// An action command arrives: a trigger, if the keys match.
    void act(const ActionCommand& command, ExposureSchedule::Time time);

    bool isPresent() const override;
    bool isConnected() const override;
    CameraStatus identify(CameraIdentity& identity) override;
    CameraStatus connect(uint64_t handle, bool alone) override;
    CameraStatus disconnect(uint64_t handle) override;
    CameraStatus setStarted(uint64_t handle, bool started) override;
    CameraStatus read(uint64_t handle, const char* name, ParameterType type, ParameterValue& value) override;
    CameraStatus write(uint64_t handle, const char* name, ParameterType type,
                       const ParameterValue& value) override;
    CameraStatus execute(uint64_t handle, const char* name) override;
    CameraStatus writeRegister(uint64_t handle, const char* name, uint32_t value) override;
    void forget(uint64_t handle) override;
    CameraStream* openStream() override;
    CameraView view() const override;
    double pictureRate() const override;

private:
    class Stream;

    struct ActionGroup {
        uint32_t key = 0, mask = 0;
    };

    using Order = CameraStatus (SimulatedCamera::*)();
    struct CommandRow {
        std::string_view name;
        Order order;
    };
    static const CommandRow kCommands[];

    template <typename Action>
    CameraStatus called(Action action);
    template <typename Action>
    CameraStatus calledBy(uint64_t handle, Action action);

    void switchOn() ORVO_REQUIRES(m_mutex);
    void drop(uint64_t handle) ORVO_REQUIRES(m_mutex);
    bool isSending() const ORVO_REQUIRES(m_mutex);
    bool isTriggered() const ORVO_REQUIRES(m_mutex);
    double freeRate() const ORVO_REQUIRES(m_mutex);
    CameraView currentView() const ORVO_REQUIRES(m_mutex);
    void trigger(ExposureSchedule::Time time) ORVO_REQUIRES(m_mutex);
    bool obeys(const ActionCommand& command) const ORVO_REQUIRES(m_mutex);
    uint32_t* registerOf(std::string_view name) ORVO_REQUIRES(m_mutex);

    CameraStatus start() ORVO_REQUIRES(m_mutex);
    CameraStatus halt() ORVO_REQUIRES(m_mutex);
    CameraStatus triggerBySoftware() ORVO_REQUIRES(m_mutex);
    CameraStatus loadUserSet() ORVO_REQUIRES(m_mutex);
    CameraStatus saveUserSet() ORVO_REQUIRES(m_mutex);
    CameraStatus reset() ORVO_REQUIRES(m_mutex);

    mutable os::Mutex m_mutex;
    std::condition_variable m_changed;                      // anything that a stream may wait for
    std::set<Stream*> m_streams ORVO_GUARDED_BY(m_mutex);   // that are open
    bool m_isDescribed ORVO_GUARDED_BY(m_mutex) = false;
    CameraDescription m_description ORVO_GUARDED_BY(m_mutex);   // the latest one
    bool m_isGone ORVO_GUARDED_BY(m_mutex) = false;
    std::optional<uint64_t> m_callsLeft ORVO_GUARDED_BY(m_mutex);   // until it vanishes
    ParameterSheet m_parameters ORVO_GUARDED_BY(m_mutex);
    std::optional<ParameterSheet> m_userSet ORVO_GUARDED_BY(m_mutex);
    std::set<uint64_t> m_connected ORVO_GUARDED_BY(m_mutex);   // handles
    bool m_isStarted ORVO_GUARDED_BY(m_mutex) = false;
    uint32_t m_actionDeviceKey ORVO_GUARDED_BY(m_mutex) = 0;
    std::map<uint32_t, ActionGroup>
        m_actionGroups ORVO_GUARDED_BY(m_mutex);   // by number; those that were written
};

}   // namespace orvo::sim

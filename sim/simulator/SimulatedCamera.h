#pragma once

#include <condition_variable>
#include <cstdint>
#include <map>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <string_view>

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

/// The camera behind one port of a board, life after life. Threads: any.
class SimulatedCamera final : public Camera {
public:
    /// A new life: switched on with what the boards file says of it, or not there at all.
    void plugIn(const CameraDescription& description);
    void unplug();
    /// Whether the boards file has it.
    bool isDescribed() const;

    /// From now on so many calls reach it, then it is gone; 0: it is gone now.
    void vanishAfter(uint64_t calls);
    /// Back again, as after a loss of power: nobody is connected, and the parameters are those at first.
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

    void switchOn();
    void drop(uint64_t handle);
    // The caller of all of these holds the mutex.
    bool isSending() const;
    bool isTriggered() const;
    double freeRate() const;
    CameraView currentView() const;
    void trigger(ExposureSchedule::Time time);
    bool obeys(const ActionCommand& command) const;
    uint32_t* registerOf(std::string_view name);

    CameraStatus start();
    CameraStatus halt();
    CameraStatus triggerBySoftware();
    CameraStatus loadUserSet();
    CameraStatus saveUserSet();
    CameraStatus reset();

    mutable std::mutex m_mutex;
    std::condition_variable m_changed;   // anything that a stream may wait for
    std::set<Stream*> m_streams;         // that are open
    bool m_isDescribed = false;
    CameraDescription m_description;   // the latest one
    bool m_isGone = false;
    std::optional<uint64_t> m_callsLeft;   // until it vanishes
    ParameterSheet m_parameters;
    std::optional<ParameterSheet> m_userSet;
    std::set<uint64_t> m_connected;   // handles
    bool m_isStarted = false;
    uint32_t m_actionDeviceKey = 0;
    std::map<uint32_t, ActionGroup> m_actionGroups;   // by number; those that were written
};

}   // namespace orvo::sim

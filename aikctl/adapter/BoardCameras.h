#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "aik/aik.hpp"
#include "aikctl/adapter/CheckedWrite.h"

namespace orvo::aikctl {

/// A camera input of a board that has a camera.
struct CameraPort {
    int32_t number;
    std::string cameraName;
};

/// "channel 0" and "channel 0, port 1", for messages.
std::string placeOf(const aik::Channel& channel);
std::string placeOf(const aik::Channel& channel, const CameraPort& port);

/// Whether the feature belongs to the camera that "PortIndex" selects.
bool concernsSelectedCamera(const std::string& feature);

/// The cameras of the board that a channel belongs to, controlled through that channel's features. All
/// channels of a board share them, and nothing tells which port feeds which channel.
/// Threads: one for all channels of the board. Only sendActionCommand() may run beside image functions of the
///          channel.
/// Throws:  aik::Error, from everything that the adapter refuses, and where noted runtime_error.
class BoardCameras {
public:
    /// The channel outlives this.
    explicit BoardCameras(aik::Channel& channel) : m_channel(&channel) {}
    BoardCameras(BoardCameras&& other) noexcept;
    BoardCameras& operator=(BoardCameras&&) = delete;
    ~BoardCameras();   // closes; a failure is ignored

    aik::Channel& channel() const { return *m_channel; }

    /// Connects every camera that is found, and selects the first one. False if another channel of the board
    /// has connected them; they are then controlled there. If the detection fails, the cameras found until
    /// then can be used.
    bool connect();
    /// The two halves of connect(). A failed detection throws runtime_error, which adds the ports that were not
    /// searched to what the adapter says.
    bool open();
    void detect();
    /// Throws runtime_error, after closing, if a camera does not take its trigger back.
    void close();

    /// The ports that have a camera, in rising order.
    const std::vector<CameraPort>& ports() const { return m_ports; }
    void select(int32_t port);
    /// "ports 0 and 1", "port 3"
    std::string describePorts() const;

    /// Finds the port whose camera feeds the channel: starts one camera after the other, and waits for a picture
    /// up to `patience`. Sets up the channel, and stops it again. None if no camera makes a picture come. Throws
    /// runtime_error if pictures come that no started camera can have sent.
    std::optional<int32_t> probe(std::chrono::duration<double> patience);

    /// The selected camera.
    void start() { m_channel->execute("StartAcquisition"); }
    void stop() { m_channel->execute("StopAcquisition"); }
    /// Writes a parameter of any kind, and reads it back; see writeParameter().
    Written setParameter(const std::string& name, const std::string& value);
    /// A parameter that is a whole number; none if the camera has no such parameter.
    std::optional<int64_t> integerParameter(const std::string& name);

    /// Whether the cameras of this board know action commands. They are the GigE Vision ones.
    bool knowsActionCommands() const;
    /// Has the selected camera take a picture at each action command, and only then, until close() gives it back
    /// the trigger that it had.
    void armForActionCommands();
    /// Has all cameras of the board take a picture at the same moment. False, with nothing sent, if there is no
    /// camera, or none that knows action commands.
    bool sendActionCommand();

private:
    void findCameras();
    std::string restoreTriggers();
    bool waitForPicture(std::chrono::duration<double> patience);
    std::string portsNotSearched() const;

    aik::Channel* m_channel;
    struct Setting {
        int32_t port;
        std::string name;
        std::string value;
    };

    bool m_isOpen = false;
    std::vector<CameraPort> m_ports;
    std::vector<Setting> m_before;   // what armForActionCommands() has changed
};

}   // namespace orvo::aikctl

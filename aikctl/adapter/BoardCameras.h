#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "aik/aik.hpp"

namespace orvo::aikctl {

/// The cameras of the board that a channel belongs to, controlled through that channel's features. All
/// channels of a board share them, and nothing tells which port feeds which channel.
/// Threads: one for all channels of the board. Only sendActionCommand() may run beside image functions of the
///          channel.
/// Throws:  aik::Error, from everything that the adapter refuses.
class BoardCameras {
public:
    /// The channel outlives this.
    explicit BoardCameras(aik::Channel& channel) : m_channel(&channel) {}
    BoardCameras(BoardCameras&& other) noexcept;
    BoardCameras& operator=(BoardCameras&&) = delete;
    ~BoardCameras();   // closes; a failure is ignored

    const aik::Channel& channel() const { return *m_channel; }

    /// Connects every camera that is found, and selects the first one. False if another channel of the board
    /// has connected them; they are then controlled there. If the detection fails, the cameras found until
    /// then can be used.
    bool connect();
    /// The two halves of connect().
    bool open();
    void detect();
    void close();

    /// The ports that have a camera, in rising order.
    const std::vector<int32_t>& ports() const { return m_ports; }
    void select(int32_t port);

    void startAll();
    void stopAll();

    /// Sets a parameter of the selected camera, of any kind. Booleans are "True" and "False"; throws
    /// runtime_error for any other text.
    void setParameter(const std::string& name, const std::string& value);

    /// Whether the cameras of this board know action commands.
    bool knowsActionCommands() const;
    /// Has every camera take a picture at each action command, and only then.
    void armForActionCommands();
    /// Has all cameras of the board take a picture at the same moment.
    void sendActionCommand();

private:
    void findCameras();

    aik::Channel* m_channel;
    bool m_isOpen = false;
    std::vector<int32_t> m_ports;
};

}   // namespace orvo::aikctl

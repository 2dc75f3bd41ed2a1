#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "aikctl/Channel.h"

namespace orvo::aikctl {

/// The cameras of the board that a channel belongs to, led through that channel's features. All channels of a
/// board share them, and nothing tells which port feeds which channel.
/// Threads: one for all channels of the board. Not beside image functions of the channel, but for
///          sendActionCommand().
/// Throws:  AdapterFailure, from everything that the adapter refuses.
class BoardCameras {
public:
    /// The channel outlives this.
    explicit BoardCameras(Channel& channel) : m_channel(&channel) {}
    BoardCameras(BoardCameras&& other) noexcept;
    BoardCameras& operator=(BoardCameras&&) = delete;
    ~BoardCameras();   // closes, whatever comes of it

    const Channel& channel() const { return *m_channel; }

    /// Connects every camera that is found, and selects the first of them. False if another channel of the
    /// board has done so: its cameras are not ours to lead. After a detection that failed, those that it had
    /// found before can be led all the same.
    bool connect();
    /// The first half of connect() alone, and the second.
    bool open();
    void detect();
    void close();

    /// The ports that have a camera, in rising order.
    const std::vector<int32_t>& ports() const { return m_ports; }
    void select(int32_t port);

    void startAll();
    void stopAll();

    /// Sets a parameter of the selected camera, whatever kind of value it has: booleans are True and False.
    /// Throws runtime_error for a boolean that is neither.
    void setParameter(const std::string& name, const std::string& value);

    /// Whether the cameras of this board know action commands.
    bool knowsActionCommands() const;
    /// From now on every camera takes a picture at an action command, and at nothing else.
    void armForActionCommands();
    /// All cameras of the board take a picture at the same moment.
    void sendActionCommand();

private:
    void findCameras();

    Channel* m_channel;
    bool m_isOpen = false;
    std::vector<int32_t> m_ports;
};

}   // namespace orvo::aikctl

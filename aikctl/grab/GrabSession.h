#pragma once

#include <cstdint>
#include <deque>
#include <vector>

#include "aikctl/grab/ActionCommands.h"
#include "aikctl/grab/ChannelGrab.h"
#include "aikctl/grab/GrabCameras.h"

namespace orvo::aikctl {

class Console;

/// What a grab is to do, with all of its channels.
struct SessionOptions {
    GrabOptions grab;
    CameraOptions cameras;
    bool isFailingOnLoss = false;           // a picture that was skipped or lost fails the grab
    bool isAlwaysShowingProgress = false;   // also where nobody seems to look
};

/// A grab of several channels at the same time, with the cameras of their boards.
/// Threads: one.
/// Throws:  runtime_error if the grab can't begin. What happens later goes to the console, and fails one channel.
class GrabSession {
public:
    using Grabs = std::deque<ChannelGrab>;   // a deque never moves its elements

    /// The channels, the folder and the console outlive the session.
    GrabSession(const std::vector<aik::Channel*>& channels, SessionOptions options,
                const PictureFolder& folder, Console& console);

    /// From the set-up to the account.
    void run();

    const Grabs& grabs() const { return m_grabs; }
    /// After run(). Empty if pictures were not to be taken by action commands.
    const std::vector<ActionCommands>& actions() const { return m_actions; }

private:
    void acquire(GrabCameras& cameras);
    void awaitPictures(GrabCameras& cameras);
    void showProgress() const;
    void complain();

    const SessionOptions m_options;
    Console& m_console;
    Grabs m_grabs;
    uint64_t m_sent = 0;   // action commands, on each board
    std::vector<ActionCommands> m_actions;
};

}   // namespace orvo::aikctl

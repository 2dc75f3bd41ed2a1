#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <vector>

#include "aikctl/grab/ActionCommands.h"
#include "aikctl/grab/ChannelGrab.h"
#include "aikctl/grab/GrabCameras.h"
#include "aikctl/grab/PictureSaver.h"

namespace orvo::aikctl {

class Console;

/// What a grab is to do, with all of its channels.
struct SessionOptions {
    GrabOptions grab;
    CameraOptions cameras;
    Encoding encoding;
    unsigned jobs = 1;                      // threads that encode and write
    bool isFailingOnLoss = false;           // a picture that was skipped or lost fails the grab
    bool isAlwaysShowingProgress = false;   // also where nobody seems to look
    bool isShowingSeconds = false;          // a line for each, if the grab is watched
};

/// A grab of several channels at the same time, with the cameras of their boards.
/// Threads: one.
/// Throws:  runtime_error if the grab can't begin. What happens later goes to the console, and fails one channel.
class GrabSession {
public:
    using Grabs = std::deque<ChannelGrab>;   // a deque never moves its elements

    /// The channels and the console outlive the session.
    GrabSession(const std::vector<aik::Channel*>& channels, SessionOptions options, Console& console);

    /// From the set-up to the account. The target begins once a channel is ready and no setting was refused.
    void run(const PictureSaver::Target& target);

    const SessionOptions& options() const { return m_options; }
    // After run():
    bool isSaving() const { return m_isSaving; }   // pictures were not discarded
    const Grabs& grabs() const { return m_grabs; }
    const std::deque<GrabCameras::Board>& boards() const { return m_cameras.boards(); }
    /// Empty if pictures were not to be taken by action commands.
    const std::vector<ActionCommands>& actions() const { return m_actions; }

private:
    std::unique_ptr<PictureSaver> makeSaver(const PictureSaver::Target& target) const;
    void awaitPictures(PictureQueue* queue);
    void forgetUnansweredCommand();
    void showProgress();
    void showSeconds();
    void complain();

    const SessionOptions m_options;
    Console& m_console;
    Grabs m_grabs;
    GrabCameras m_cameras;
    bool m_isSaving = false;
    uint64_t m_sent = 0;   // action commands, on each board
    std::vector<ActionCommands> m_actions;
};

}   // namespace orvo::aikctl

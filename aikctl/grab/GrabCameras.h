#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "aikctl/adapter/BoardCameras.h"

namespace orvo::aikctl {

class Console;

/// What a grab does with the cameras.
struct CameraOptions {
    bool areLeftAlone = false;
    std::vector<std::string> settings;   // parameters to set in every camera, as NAME=VALUE
    bool isByActionCommand = false;      // take each picture by an action command
};

/// The cameras of all boards that a grab fetches from. Call in this order: connect() for each channel,
/// start(), shoot() any number of times, stop(), close().
/// Threads: one; only shoot() may run beside image functions.
/// Throws:  nothing. Failures go to the console. What the options ask for fails the grab; the rest is a note,
///          because a board can deliver without a camera that this program controls.
class GrabCameras {
public:
    /// Both outlive this.
    GrabCameras(const CameraOptions& options, Console& console) : m_options(options), m_console(console) {}

    void connect(aik::Channel& channel);
    void start();
    /// Sends an action command on each board.
    void shoot();
    void stop();
    void close();

private:
    enum class Failing { IsANote, FailsTheGrab };
    using Step = std::function<void(BoardCameras&)>;

    void prepare(BoardCameras& cameras) const;
    void attempt(Failing failing, BoardCameras& cameras, const Step& step);
    void attemptAll(Failing failing, const Step& step);

    const CameraOptions& m_options;
    Console& m_console;
    std::deque<BoardCameras> m_boards;
};

}   // namespace orvo::aikctl

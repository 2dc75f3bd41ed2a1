#pragma once

#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "aikctl/BoardCameras.h"

namespace orvo::aikctl {

class Console;

/// What a grab shall do with cameras.
struct CameraOptions {
    bool areLeftAlone = false;
    std::vector<std::string> settings;   // NAME=VALUE of parameters, for every camera
    bool isByActionCommand = false;      // each picture
};

/// The cameras of all boards that a grab fetches from. Call in this order: connect() for each channel, start(),
/// shoot() as often as you like, stop(), close().
/// Threads: one; shoot() alone beside image functions.
/// Throws:  nothing: what fails is told to the console, and is a failure of the grab only if the options ask
///          for it. Boards deliver without a camera that is led, too.
class GrabCameras {
public:
    /// Both outlive this.
    GrabCameras(const CameraOptions& options, Console& console) : m_options(options), m_console(console) {}

    void connect(Channel& channel);
    void start();
    /// An action command for each board.
    void shoot();
    void stop();
    void close();

private:
    void prepare(BoardCameras& cameras) const;
    void tryTo(BoardCameras& cameras, const std::function<void()>& step, bool isAskedFor);
    void forEach(const std::function<void(BoardCameras&)>& step, bool isAskedFor);

    const CameraOptions& m_options;
    Console& m_console;
    std::deque<BoardCameras> m_boards;
};

}   // namespace orvo::aikctl

#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "aikctl/grab/GrabCameras.h"

namespace CLI   // NOLINT(readability-identifier-naming): the library's own name
{
class App;
class Option;
}   // namespace CLI

namespace orvo::aikctl {

class BoardCameras;
class Console;

/// Which camera of the board a command controls.
struct CameraChoice {
    bool isConnected = false;                    // connect the cameras; otherwise there is nothing to choose
    std::optional<int32_t> port = {};            // none: the only one, or what the command itself selects
    bool isProbed = false;                       // find out which one feeds the channel
    std::chrono::duration<double> patience{5};   // with the probed ones: how long to wait for a picture
};

/// Adds --port.
CLI::Option* declarePort(CLI::App& command, std::optional<int32_t>& port, const std::string& help);
/// Adds --camera, --port and --probe.
void declareCameraChoice(CLI::App& command, CameraChoice& choice);

/// Connects the cameras and selects the chosen one. Failures that leave cameras to use go to the console. Throws
/// runtime_error if no camera could be connected, or the chosen one isn't there. Returns whether a camera is
/// chosen: with several on the board and no choice, the first one is selected and may be the wrong one.
bool connectCamera(BoardCameras& cameras, const CameraChoice& choice, Console& console);

/// Adds what a grab does with the cameras, and what it sets in cameras and boards.
void declareCameraOptions(CLI::App& command, CameraOptions& options);

}   // namespace orvo::aikctl

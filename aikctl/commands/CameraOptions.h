#pragma once

#include "aikctl/grab/GrabCameras.h"

namespace CLI   // NOLINT(readability-identifier-naming): the library's own name
{
class App;
}

namespace orvo::aikctl {

/// Adds what a grab does with the cameras, and what it sets in cameras and boards.
void declareCameraOptions(CLI::App& command, CameraOptions& options);

}   // namespace orvo::aikctl

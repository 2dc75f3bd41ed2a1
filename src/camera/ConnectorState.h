#pragma once

#include <cstdint>

namespace orvo::cognex {

/// How far the host has led a connector. The numbers stand in the log and are no scale: the order is that of
/// the chain in which the states build on each other.
enum class ConnectorState : int32_t {
    NoPorts = 0,              // the library is open, and there is no port
    Uninitialized = 1,        // the library is closed
    NoCameras = 2,            // the selected port has no camera
    PortIndexInvalid = 3,     // "PortIndex" is not below the number of ports
    CameraSelected = 4,       // only passed through, on the way to the last two
    CameraIndexInvalid = 5,   // "CameraIndex" is not below the number of the port's cameras
    CameraDetected = 6,       // the selected camera is not connected
    CameraConnected = 7,
};

}   // namespace orvo::cognex

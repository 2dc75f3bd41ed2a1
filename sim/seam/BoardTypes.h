#pragma once

#include <cstdint>
#include <string>

namespace orvo::sim {

/// What one kind of cameras, and the boards that take them, differ in from the others. A family is a row of
/// kCameraFamilies: the same row, the same family.
struct CameraFamily {
    int32_t builtInBoard;      // type code of the board that is there without a boards file
    uint32_t ports;            // DMA ports of an applet that says nothing of them, each with a camera port
    bool isGrey;               // pictures at first: grey, else colour
    bool isOnNetwork;          // packets can be tuned, and action commands reach the cameras
    bool sendsOnceConnected;   // else a camera has to be started as well
};

inline constexpr CameraFamily kCameraFamilies[] = {
    {.builtInBoard = 2897, .ports = 2, .isGrey = true, .isOnNetwork = true, .sendsOnceConnected = false},
    {.builtInBoard = 1872, .ports = 1, .isGrey = false, .isOnNetwork = false, .sendsOnceConnected = true},
};
inline constexpr const CameraFamily& kGigEVision = kCameraFamilies[0];
inline constexpr const CameraFamily& kGenICam = kCameraFamilies[1];

/// By type code; a code that isn't known counts as GenICam.
const CameraFamily& cameraFamilyOf(int32_t type);
/// A board's name belongs to its type code; "Board type N" for one that isn't known.
std::string boardNameOf(int32_t type);

}   // namespace orvo::sim

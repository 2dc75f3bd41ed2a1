#pragma once

#include <cstdint>
#include <string>

namespace orvo::sim {

/// The camera inputs of a board.
enum class CameraFamily { GigEVision, GenICam };

/// By type code; a code that isn't known counts as GenICam.
CameraFamily cameraFamilyOf(int32_t type);
/// A board's name belongs to its type code; "Board type N" for one that isn't known.
std::string boardNameOf(int32_t type);

}   // namespace orvo::sim

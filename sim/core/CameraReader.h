#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "sim/cameras/CameraDescription.h"
#include "sim/json/JsonValue.h"

namespace orvo::sim {

/// The camera that a port has of which nothing more is said. The board's type settles the family.
CameraDescription standardCamera(int32_t boardType, size_t boardIndex, uint32_t port);

/// The cameras of a board, as the boards file lists them. Throws JsonError with what is wrong and where.
std::vector<CameraDescription> readCameras(const JsonValue& list, int32_t boardType, size_t boardIndex);

}   // namespace orvo::sim

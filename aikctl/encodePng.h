#pragma once

#include <cstdint>
#include <vector>

#include "aikctl/PixelFormat.h"

namespace orvo::aikctl {

/// The picture as the content of a PNG file. Throws runtime_error for a picture without pixels, or of more
/// than 2 GiB.
std::vector<uint8_t> encodePng(const Picture& picture);

}   // namespace orvo::aikctl

#pragma once

#include <cstdint>
#include <vector>

#include "aikctl/pictures/Picture.h"

namespace orvo::aikctl {

inline constexpr int kFastCompression = 1;

/// Fills `file` with a PNG. `compression` is 0 for none, kFastCompression, or 2 to 9: the larger, the slower, the
/// smaller the file. Throws runtime_error for a picture of about 2 GiB or more.
void writePng(const Picture& picture, int compression, std::vector<uint8_t>& file);

}   // namespace orvo::aikctl

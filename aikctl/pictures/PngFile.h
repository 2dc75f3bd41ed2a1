#pragma once

#include <cstdint>
#include <vector>

#include "aikctl/pictures/Picture.h"

namespace orvo::aikctl {

/// Fills `file` with a PNG. `compression` is 0 for none up to 9 for the smallest file. Throws runtime_error for a
/// picture that is too large for a PNG, and bad_alloc.
void writePng(const Picture& picture, int compression, std::vector<uint8_t>& file);

}   // namespace orvo::aikctl

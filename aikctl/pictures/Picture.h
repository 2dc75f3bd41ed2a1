#pragma once

#include <cstdint>
#include <vector>

namespace orvo::aikctl {

/// A picture as people look at it: 8 bits a sample, 1 sample a pixel (grey) or 3 (red, green, blue), rows
/// from the top without padding.
struct Picture {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t samples = 1;
    std::vector<uint8_t> bytes;
};

/// The picture as the content of a PNG file. Throws runtime_error for a picture without pixels, or of more
/// than 2 GiB.
std::vector<uint8_t> encodePng(const Picture& picture);

}   // namespace orvo::aikctl

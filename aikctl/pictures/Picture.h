#pragma once

#include <cstddef>
#include <cstdint>

namespace orvo::aikctl {

/// A picture as people look at it, over the bytes of a fetched one, which must outlive it. It has 1 sample a pixel
/// (grey) or 3 (red, green, blue), of 8 bits, or of 16 with the upper byte first.
struct Picture {
    uint32_t width = 0;    // in pixels, never 0
    uint32_t height = 0;   // in pixels, never 0
    uint32_t samples = 1;
    uint32_t bits = 8;
    const uint8_t* image = nullptr;
    /// Writes a row, counted from 0 at the top: rowBytes().
    void (*copyRow)(const Picture& picture, size_t row, uint8_t* out) = nullptr;

    size_t pixelBytes() const { return size_t{samples} * bits / 8; }
    size_t rowBytes() const { return width * pixelBytes(); }
};

}   // namespace orvo::aikctl

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sim/pictures/PixelFormat.h"

namespace orvo::sim {

/// The part of the sensor that a picture shows, in pixels, and how a pixel is laid out.
struct Geometry {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t xOffset = 0;
    uint32_t yOffset = 0;
    PixelFormat format = PixelFormat::Grey8;

    size_t bytesPerRow() const { return width * bytesPerPixel(format); }
    size_t bytes() const { return bytesPerRow() * height; }

    /// The part of `block` that row `y` takes; shorter, or empty, where the block ends before the picture.
    std::span<std::byte> row(std::span<std::byte> block, uint32_t y) const
    {
        const size_t start = std::min(block.size(), y * bytesPerRow());
        return block.subspan(start, std::min(block.size() - start, bytesPerRow()));
    }
};

}   // namespace orvo::sim

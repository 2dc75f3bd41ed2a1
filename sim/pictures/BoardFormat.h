#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace orvo::sim {

/// The layouts of a pixel in a block, by the board's numbers for them. Rows run from the top without padding.
enum class PixelFormat : int32_t {
    Grey16 = 1,     // 16 bits, little-endian
    Colour24 = 2,   // blue, green, red
    Grey8 = 3,
    Colour32 = 4,   // blue, green, red, 255
    Grey8x5 = 5,    // five bytes, each the 8-bit grey
    Colour48 = 6,   // blue, green, red, 16 bits each, little-endian
};

std::optional<PixelFormat> pixelFormatOf(int64_t number);
size_t bytesPerPixel(PixelFormat format);
bool isGrey(PixelFormat format);

/// A pixel before it is laid out: 16 bits a colour, 0 to 65535.
struct Pixel {
    uint16_t red, green, blue;

    static constexpr Pixel grey(uint16_t level) { return {level, level, level}; }
    /// From 8-bit colours, so that the upper 8 bits of each are exactly these.
    static constexpr Pixel of8Bit(uint8_t red, uint8_t green, uint8_t blue)
    {
        return {static_cast<uint16_t>(red * 257), static_cast<uint16_t>(green * 257),
                static_cast<uint16_t>(blue * 257)};
    }
};

/// Writes the pixel's bytes to `at`, which has room for them, and returns the position behind.
std::byte* layOut(PixelFormat format, Pixel pixel, std::byte* at);

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

#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

namespace orvo::sim {

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

/// How a board lays out a pixel in a block.
struct BoardFormat {
    int32_t number;     // the board's number for it
    const char* name;   // of the entry of the board's format parameter
    size_t pixelBytes;
    bool isGrey;
    /// Writes the pixel's bytes to `at`, which has room for them, and returns the position after them.
    std::byte* (*layOut)(Pixel pixel, std::byte* at);
};

/// All formats by rising number.
std::span<const BoardFormat> boardFormats();
/// Null for a number that isn't one.
const BoardFormat* findBoardFormat(int64_t number);

// The numbers of formats that the simulator itself chooses.
inline constexpr int32_t kGrey16 = 1, kColour24 = 2, kGrey8 = 3, kColour48 = 6;

/// The part of the sensor that a picture shows, in pixels, and how a pixel is laid out. Rows run from the top
/// without padding.
struct Geometry {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t xOffset = 0;
    uint32_t yOffset = 0;
    const BoardFormat* format = findBoardFormat(kGrey8);

    size_t bytesPerRow() const { return width * format->pixelBytes; }
    size_t bytes() const { return bytesPerRow() * height; }

    /// The part of `block` that row `y` takes; shorter, or empty, where the block ends before the picture.
    std::span<std::byte> row(std::span<std::byte> block, uint32_t y) const
    {
        const size_t start = std::min(block.size(), y * bytesPerRow());
        return block.subspan(start, std::min(block.size() - start, bytesPerRow()));
    }
};

}   // namespace orvo::sim

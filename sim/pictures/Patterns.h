#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "sim/pictures/BoardFormat.h"
#include "sim/pictures/PictureSource.h"
#include "sim/seam/Camera.h"

namespace orvo::sim {

/// White digits on a black ground in the upper left corner of a picture, large enough to be read by a person
/// on a screen. What has no room in the picture is cut off.
class BurntNumber {
public:
    explicit BurntNumber(const Geometry& geometry);

    void burn(uint64_t number, std::span<std::byte> block) const;

    /// The height in pixels of a dot of the digits' 5 x 7 grid; a digit takes 6 x 9 of them with its edges.
    uint32_t dot() const { return m_dot; }

private:
    std::span<const std::byte> tileRow(size_t digit, size_t gridRow) const;

    const Geometry m_geometry;
    const uint32_t m_dot;
    const size_t m_tileBytes;         // of one row of pixels of a digit
    std::vector<std::byte> m_tiles;   // for each digit its rows of pixels, one for each row of the grid
};

/// Diagonal stripes that move one pixel a picture, with the picture's number burnt into the upper left
/// corner. With v = (column + row + number) mod 256, columns and rows counted on the sensor, that is with the
/// offsets: grey is v, colour is red v xor 128, green 255 - v, blue v. A level v of 8 bits is v * 257 of 16.
class TestPattern : public PictureSource {
public:
    explicit TestPattern(const Geometry& geometry);

    void paint(uint64_t number, std::span<std::byte> block) override;

private:
    const Geometry m_geometry;
    const BurntNumber m_number;
    std::vector<std::byte> m_stripes;   // one period more than a row: every row is a part of it
};

/// The patterns that a camera makes itself: levels that depend on column and row, counted on the sensor, and
/// where the pattern moves on the picture's number. Ramps have a period of 256; the bars are white, yellow,
/// cyan, green, magenta, red, blue, black, each an eighth of the sensor wide.
class GeneratedPattern : public PictureSource {
public:
    GeneratedPattern(CameraPattern pattern, uint32_t sensorWidth, const Geometry& geometry);

    void paint(uint64_t number, std::span<std::byte> block) override;

private:
    Pixel at(uint64_t column, uint64_t row, uint64_t number) const;

    const CameraPattern m_pattern;
    const uint32_t m_sensorWidth;
    const Geometry m_geometry;
};

/// The picture's number and nothing else, for measurements: 64 bits, little-endian, at the start of the block
/// and again at its end. A block below 16 bytes has it at the start only, one below 8 bytes not at all.
class NumbersOnly : public PictureSource {
public:
    void paint(uint64_t number, std::span<std::byte> block) override;
};

}   // namespace orvo::sim

#pragma once

#include <vector>

#include "sim/pictures/BurntNumber.h"
#include "sim/pictures/PictureSource.h"

namespace orvo::sim {

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

}   // namespace orvo::sim

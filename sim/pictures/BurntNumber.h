#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "sim/pictures/Geometry.h"

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

}   // namespace orvo::sim

#include "sim/pictures/BurntNumber.h"

#include <algorithm>
#include <string>

namespace orvo::sim {

namespace {

constexpr size_t kGridWidth = 6;    // five dots and the gap to the left of them
constexpr size_t kGridHeight = 9;   // seven rows of dots with an empty one above and below
constexpr size_t kDigits = 10;

// Seven rows a digit, the leftmost dot in the highest of five bits.
constexpr uint8_t kFont[kDigits][7] = {
    {0x0E, 0x11, 0x13, 0x15, 0x19, 0x11, 0x0E}, {0x04, 0x0C, 0x04, 0x04, 0x04, 0x04, 0x0E},
    {0x0E, 0x11, 0x01, 0x02, 0x04, 0x08, 0x1F}, {0x1F, 0x02, 0x04, 0x02, 0x01, 0x11, 0x0E},
    {0x02, 0x06, 0x0A, 0x12, 0x1F, 0x02, 0x02}, {0x1F, 0x10, 0x1E, 0x01, 0x01, 0x11, 0x0E},
    {0x06, 0x08, 0x10, 0x1E, 0x11, 0x11, 0x0E}, {0x1F, 0x01, 0x02, 0x04, 0x08, 0x08, 0x08},
    {0x0E, 0x11, 0x11, 0x0E, 0x11, 0x11, 0x0E}, {0x0E, 0x11, 0x11, 0x0F, 0x01, 0x02, 0x0C},
};

bool isLit(size_t digit, size_t gridRow, size_t gridColumn)
{
    if (gridRow == 0 || gridRow == kGridHeight - 1 || gridColumn == 0)
        return false;
    return (kFont[digit][gridRow - 1] >> (kGridWidth - 1 - gridColumn)) & 1;
}

}   // namespace

BurntNumber::BurntNumber(const Geometry& geometry)
    : m_geometry(geometry),
      m_dot(std::max(1u, std::min(geometry.width / 100, geometry.height / 30))),
      m_tileBytes(kGridWidth * m_dot * bytesPerPixel(geometry.format))
{
    m_tiles.resize(kDigits * kGridHeight * m_tileBytes);
    std::byte* at = m_tiles.data();
    for (size_t digit = 0; digit < kDigits; ++digit)
        for (size_t row = 0; row < kGridHeight; ++row)
            for (size_t x = 0; x < kGridWidth * m_dot; ++x)
                at = layOut(geometry.format, Pixel::grey(isLit(digit, row, x / m_dot) ? 0xFFFF : 0), at);
}

void BurntNumber::burn(uint64_t number, std::span<std::byte> block) const
{
    const std::string digits = std::to_string(number);
    const uint32_t rows = std::min(m_geometry.height, static_cast<uint32_t>(kGridHeight) * m_dot);
    for (uint32_t y = 0; y < rows; ++y) {
        std::span<std::byte> rest = m_geometry.row(block, y);
        for (const char digit : digits) {
            const auto tile = tileRow(static_cast<size_t>(digit - '0'), y / m_dot);
            const size_t room = std::min(rest.size(), tile.size());
            std::copy_n(tile.data(), room, rest.data());
            rest = rest.subspan(room);
        }
    }
}

std::span<const std::byte> BurntNumber::tileRow(size_t digit, size_t gridRow) const
{
    return std::span(m_tiles).subspan((digit * kGridHeight + gridRow) * m_tileBytes, m_tileBytes);
}

}   // namespace orvo::sim

#include "sim/pictures/TestPattern.h"

#include <algorithm>

namespace orvo::sim {

namespace {

constexpr size_t kPeriod = 256;

Pixel stripe(PixelFormat format, size_t phase)
{
    const auto level = static_cast<uint8_t>(phase % kPeriod);
    if (isGrey(format))
        return Pixel::of8Bit(level, level, level);
    return Pixel::of8Bit(level ^ 128, static_cast<uint8_t>(255 - level), level);
}

}   // namespace

TestPattern::TestPattern(const Geometry& geometry) : m_geometry(geometry), m_number(geometry)
{
    const size_t columns = geometry.width + kPeriod;
    m_stripes.resize(columns * bytesPerPixel(geometry.format));
    std::byte* at = m_stripes.data();
    for (size_t column = 0; column < columns; ++column)
        at = layOut(geometry.format, stripe(geometry.format, column + geometry.xOffset), at);
}

void TestPattern::paint(uint64_t number, std::span<std::byte> block)
{
    const size_t pixelBytes = bytesPerPixel(m_geometry.format);
    for (uint32_t y = 0; y < m_geometry.height; ++y) {
        const std::span<std::byte> row = m_geometry.row(block, y);
        const auto phase = static_cast<size_t>((number + y + m_geometry.yOffset) % kPeriod);
        std::copy_n(m_stripes.data() + phase * pixelBytes, row.size(), row.data());
    }
    m_number.burn(number, block);
}

}   // namespace orvo::sim

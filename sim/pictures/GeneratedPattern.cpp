#include "sim/pictures/GeneratedPattern.h"

#include <algorithm>
#include <iterator>

namespace orvo::sim {

namespace {

constexpr Pixel kBars[] = {
    Pixel::of8Bit(255, 255, 255), Pixel::of8Bit(255, 255, 0), Pixel::of8Bit(0, 255, 255),
    Pixel::of8Bit(0, 255, 0),     Pixel::of8Bit(255, 0, 255), Pixel::of8Bit(255, 0, 0),
    Pixel::of8Bit(0, 0, 255),     Pixel::of8Bit(0, 0, 0),
};

/// How often column, row and number count in a ramp.
struct Slope {
    uint64_t column, row, number;
};

Slope slopeOf(CameraPattern pattern)
{
    switch (pattern) {
    case CameraPattern::HorizontalRamp:
        return {1, 0, 0};
    case CameraPattern::VerticalRamp:
        return {0, 1, 0};
    case CameraPattern::HorizontalRampMoving:
        return {1, 0, 1};
    case CameraPattern::VerticalRampMoving:
        return {0, 1, 1};
    default:
        return {1, 1, 1};
    }
}

}   // namespace

GeneratedPattern::GeneratedPattern(CameraPattern pattern, uint32_t sensorWidth, const Geometry& geometry)
    : m_pattern(pattern), m_sensorWidth(std::max(sensorWidth, 1u)), m_geometry(geometry)
{}

void GeneratedPattern::paint(uint64_t number, std::span<std::byte> block)
{
    const size_t pixelBytes = bytesPerPixel(m_geometry.format);
    for (uint32_t y = 0; y < m_geometry.height; ++y) {
        const std::span<std::byte> row = m_geometry.row(block, y);
        std::byte* out = row.data();
        for (size_t x = 0; x < row.size() / pixelBytes; ++x)
            out = layOut(m_geometry.format, at(x + m_geometry.xOffset, y + m_geometry.yOffset, number), out);
    }
}

Pixel GeneratedPattern::at(uint64_t column, uint64_t row, uint64_t number) const
{
    switch (m_pattern) {
    case CameraPattern::Black:
        return Pixel::grey(0);
    case CameraPattern::White:
        return Pixel::grey(0xFFFF);
    case CameraPattern::ColorBar:
        return kBars[std::min(column * std::size(kBars) / m_sensorWidth, std::size(kBars) - 1)];
    default:
        break;
    }
    const Slope slope = slopeOf(m_pattern);
    const auto level = static_cast<uint8_t>(slope.column * column + slope.row * row + slope.number * number);
    return Pixel::of8Bit(level, level, level);
}

}   // namespace orvo::sim

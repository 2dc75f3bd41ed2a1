#include "sim/pictures/Patterns.h"

#include <algorithm>
#include <iterator>
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

constexpr size_t kPeriod = 256;

Pixel stripe(const BoardFormat& format, size_t phase)
{
    const auto level = static_cast<uint8_t>(phase % kPeriod);
    if (format.isGrey)
        return Pixel::of8Bit(level, level, level);
    return Pixel::of8Bit(level ^ 128, static_cast<uint8_t>(255 - level), level);
}

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

constexpr size_t kNumberSize = sizeof(uint64_t);

void put(uint64_t number, std::span<std::byte> at)
{
    for (std::byte& byte : at) {
        byte = static_cast<std::byte>(number & 0xFF);
        number >>= 8;
    }
}

}   // namespace

BurntNumber::BurntNumber(const Geometry& geometry)
    : m_geometry(geometry),
      m_dot(std::max(1u, std::min(geometry.width / 100, geometry.height / 30))),
      m_tileBytes(kGridWidth * m_dot * geometry.format->pixelBytes)
{
    m_tiles.resize(kDigits * kGridHeight * m_tileBytes);
    std::byte* at = m_tiles.data();
    for (size_t digit = 0; digit < kDigits; ++digit)
        for (size_t row = 0; row < kGridHeight; ++row)
            for (size_t x = 0; x < kGridWidth * m_dot; ++x)
                at = geometry.format->layOut(Pixel::grey(isLit(digit, row, x / m_dot) ? 0xFFFF : 0), at);
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

TestPattern::TestPattern(const Geometry& geometry) : m_geometry(geometry), m_number(geometry)
{
    const size_t columns = geometry.width + kPeriod;
    m_stripes.resize(columns * geometry.format->pixelBytes);
    std::byte* at = m_stripes.data();
    for (size_t column = 0; column < columns; ++column)
        at = geometry.format->layOut(stripe(*geometry.format, column + geometry.xOffset), at);
}

void TestPattern::paint(uint64_t number, std::span<std::byte> block)
{
    const size_t pixelBytes = m_geometry.format->pixelBytes;
    for (uint32_t y = 0; y < m_geometry.height; ++y) {
        const std::span<std::byte> row = m_geometry.row(block, y);
        const auto phase = static_cast<size_t>((number + y + m_geometry.yOffset) % kPeriod);
        std::copy_n(m_stripes.data() + phase * pixelBytes, row.size(), row.data());
    }
    m_number.burn(number, block);
}

GeneratedPattern::GeneratedPattern(CameraPattern pattern, uint32_t sensorWidth, const Geometry& geometry)
    : m_pattern(pattern), m_sensorWidth(std::max(sensorWidth, 1u)), m_geometry(geometry)
{}

void GeneratedPattern::paint(uint64_t number, std::span<std::byte> block)
{
    const size_t pixelBytes = m_geometry.format->pixelBytes;
    for (uint32_t y = 0; y < m_geometry.height; ++y) {
        const std::span<std::byte> row = m_geometry.row(block, y);
        std::byte* out = row.data();
        for (size_t x = 0; x < row.size() / pixelBytes; ++x)
            out = m_geometry.format->layOut(at(x + m_geometry.xOffset, y + m_geometry.yOffset, number), out);
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

void NumbersOnly::paint(uint64_t number, std::span<std::byte> block)
{
    if (block.size() >= kNumberSize)
        put(number, block.first(kNumberSize));
    if (block.size() >= 2 * kNumberSize)
        put(number, block.last(kNumberSize));
}

}   // namespace orvo::sim

#include "sim/pictures/CameraPainter.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "sim/pictures/Patterns.h"

namespace orvo::sim {

namespace {

constexpr double kWhite = 65'535;

/// Where on the sensor the board's part of `length` pixels begins, `from` pixels after the camera's first one.
/// A reversed camera reads its `size` pixels from the other end.
uint32_t beginOnSensor(uint32_t offset, uint32_t size, uint32_t from, uint32_t length, bool isReversed)
{
    if (length == 0)
        return offset;
    return offset + (isReversed ? size - from - length : from);
}

uint16_t levelAt(const std::byte* at)
{
    return static_cast<uint16_t>(static_cast<unsigned>(at[0]) | static_cast<unsigned>(at[1]) << 8);
}

uint16_t brightened(uint16_t level, double factor)
{
    return static_cast<uint16_t>(std::min(std::round(level * factor), kWhite));
}

}   // namespace

CameraPainter::CameraPainter(PictureChoice scene, const Geometry& board)
    : m_scene(std::move(scene)), m_board(board)
{}

void CameraPainter::paint(const CameraView& view, uint64_t number, std::span<std::byte> block)
{
    if (!m_source || m_view != view)
        prepare(view);
    if (m_raw.empty()) {
        m_source->paint(number, block);
        return;
    }
    m_source->paint(number, m_raw);
    develop(block);
}

void CameraPainter::prepare(const CameraView& view)
{
    m_view = view;
    m_part.width = std::min(m_board.width, view.width - std::min(view.width, m_board.xOffset));
    m_part.height = std::min(m_board.height, view.height - std::min(view.height, m_board.yOffset));
    m_part.xOffset = beginOnSensor(view.xOffset, view.width, m_board.xOffset, m_part.width, view.isReversedX);
    m_part.yOffset =
        beginOnSensor(view.yOffset, view.height, m_board.yOffset, m_part.height, view.isReversedY);
    m_raw.clear();
    if (isPlain()) {
        m_part.format = m_board.format;
    } else {
        m_part.format = findBoardFormat(view.isGrey || m_board.format->isGrey ? kGrey16 : kColour48);
        m_raw.resize(std::max<size_t>(m_part.bytes(), 1));
    }
    m_source = view.pattern == CameraPattern::Scene
                   ? m_scene.sourceFor(m_part)
                   : std::make_unique<GeneratedPattern>(view.pattern, view.sensorWidth, m_part);
}

/// Whether the picture can be painted right into the block.
bool CameraPainter::isPlain() const
{
    if (m_scene.kind == PictureChoice::Kind::NumbersOnly && m_view.pattern == CameraPattern::Scene)
        return true;
    return m_part.width == m_board.width && m_part.height == m_board.height && !m_view.isReversedX &&
           !m_view.isReversedY && m_view.brightness == 1 && (!m_view.isGrey || m_board.format->isGrey);
}

void CameraPainter::develop(std::span<std::byte> block) const
{
    const size_t rawPixel = m_part.format->pixelBytes;
    const size_t pixel = m_board.format->pixelBytes;
    for (uint32_t y = 0; y < m_board.height; ++y) {
        const std::span<std::byte> row = m_board.row(block, y);
        const auto columns = y < m_part.height
                                 ? std::min<uint32_t>(m_part.width, static_cast<uint32_t>(row.size() / pixel))
                                 : 0u;
        const uint32_t rawRow = m_view.isReversedY ? m_part.height - 1 - y : y;
        std::byte* out = row.data();
        for (uint32_t x = 0; x < columns; ++x) {
            const uint32_t rawColumn = m_view.isReversedX ? m_part.width - 1 - x : x;
            out = m_board.format->layOut(
                seen(m_raw.data() + (size_t{rawRow} * m_part.width + rawColumn) * rawPixel), out);
        }
        std::fill(out, row.data() + row.size(), std::byte{0});
    }
}

Pixel CameraPainter::seen(const std::byte* at) const
{
    const auto level = [&](size_t place) {
        const uint16_t raw = levelAt(at + 2 * place);
        return m_view.brightness == 1 ? raw : brightened(raw, m_view.brightness);
    };
    if (m_part.format->isGrey)
        return Pixel::grey(level(0));
    return {level(2), level(1), level(0)};
}

}   // namespace orvo::sim

#pragma once

#include "sim/core/Camera.h"
#include "sim/pictures/PictureSource.h"

namespace orvo::sim {

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

}   // namespace orvo::sim

#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "sim/pictures/PictureSource.h"
#include "sim/seam/Camera.h"

namespace orvo::sim {

/// Pictures of a camera in a board's geometry and format. The board cuts its part out of the camera's picture
/// from its offsets on, and leaves zeros where the camera has nothing. Threads: one at a time.
class CameraPainter {
public:
    /// `scene`: what the camera looks at. Bare numbers are painted as they are, whatever the view.
    CameraPainter(PictureChoice scene, const Geometry& board);

    /// As PictureSource::paint().
    void paint(const CameraView& view, uint64_t number, std::span<std::byte> block);

private:
    void prepare(const CameraView& view);
    bool isPlain() const;
    void develop(std::span<std::byte> block) const;
    Pixel seen(const std::byte* at) const;

    const PictureChoice m_scene;
    const Geometry m_board;
    CameraView m_view;   // that the rest is prepared for, once there is a source
    Geometry m_part;     // of the sensor, that is seen: in the upper left corner of the block
    std::unique_ptr<PictureSource> m_source;
    std::vector<std::byte> m_raw;   // the part, before anything is done to it; empty if nothing is
};

}   // namespace orvo::sim

#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

#include "sim/pictures/BoardFormat.h"

namespace orvo::sim {

class PlayedFolder;

/// Fills blocks with pictures of one geometry: made anew for each run, so that the costly part is done once.
/// Threads: one at a time.
class PictureSource {
public:
    PictureSource(const PictureSource&) = delete;
    PictureSource& operator=(const PictureSource&) = delete;
    virtual ~PictureSource() = default;

    /// Writes picture `number`, counted from 1. A block that is too small gets the picture's beginning; the
    /// rest of a larger one is left alone.
    virtual void paint(uint64_t number, std::span<std::byte> block) = 0;

protected:
    PictureSource() = default;
};

/// What the pictures of a DMA show, as its applet file says.
struct PictureChoice {
    enum class Kind { Pattern, Folder, NumbersOnly };

    Kind kind = Kind::Pattern;
    std::shared_ptr<const PlayedFolder> folder;   // of Kind::Folder
    bool cropped = false;                         // of Kind::Folder: cut to the geometry, else scaled to it

    std::unique_ptr<PictureSource> sourceFor(const Geometry& geometry) const;
};

}   // namespace orvo::sim

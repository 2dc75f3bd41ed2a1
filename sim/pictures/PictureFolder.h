#pragma once

#include <memory>
#include <string>
#include <vector>

#include "sim/pictures/Photo.h"
#include "sim/pictures/PictureSource.h"

namespace orvo::sim {

/// The recorded pictures of one folder, in the order of their file names, read once and kept in memory.
class PictureFolder {
public:
    /// Reads all files that end in .png, .jpg, .jpeg, .pgm or .ppm, in any case. Throws std::runtime_error
    /// for a folder that can't be read or holds none, and for the first picture that can't be read.
    explicit PictureFolder(const std::string& path);

    /// At least one.
    const std::vector<Photo>& photos() const { return m_photos; }

private:
    std::vector<Photo> m_photos;
};

/// Plays a folder, the picture of number 1 first, and begins again behind the last one.
class FolderPlayer : public PictureSource {
public:
    /// `cropped`: the geometry cuts its part out of each picture, and zeros stand where the picture has
    /// nothing; otherwise each picture is scaled to the geometry's size and the offsets mean nothing.
    FolderPlayer(std::shared_ptr<const PictureFolder> folder, const Geometry& geometry, bool cropped);

    void paint(uint64_t number, std::span<std::byte> block) override;

private:
    std::vector<std::byte> laidOut(const Photo& photo) const;

    const std::shared_ptr<const PictureFolder> m_folder;
    const Geometry m_geometry;
    const bool m_cropped;
    std::vector<std::vector<std::byte>> m_pictures;   // as they go into a block; empty until first shown
};

}   // namespace orvo::sim

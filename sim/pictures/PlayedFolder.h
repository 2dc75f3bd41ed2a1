#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <vector>

#include "sim/pictures/BoardFormat.h"
#include "sim/pictures/PictureSource.h"

namespace orvo::sim {

/// A recorded picture: PNG, JPEG, PGM or PPM, with 8 or 16 bits a sample.
class Photo {
public:
    /// Reads the file at `path`. Throws std::runtime_error with the path and what is wrong with it.
    static Photo read(const std::filesystem::path& path);

    uint32_t width() const { return m_width; }
    uint32_t height() const { return m_height; }
    bool isGrey() const { return m_channels == 1; }
    /// Column and row inside the picture. 8-bit samples are widened so that their upper 8 bits are exact.
    Pixel at(uint32_t column, uint32_t row) const;

    /// The same picture in another size, stretched; an equal size gives equal pixels. Neither may be 0.
    Photo scaledTo(uint32_t width, uint32_t height) const;

private:
    uint32_t m_width = 0;
    uint32_t m_height = 0;
    uint32_t m_channels = 1;           // 1 or 3
    std::vector<uint16_t> m_samples;   // rows from the top, red before green before blue
};

/// The recorded pictures of one folder, in the order of their file names, read once and kept in memory.
class PlayedFolder {
public:
    /// Reads all files that end in .png, .jpg, .jpeg, .pgm or .ppm, in any case. Throws std::runtime_error
    /// for a folder that can't be read or holds none, and for the first picture that can't be read.
    explicit PlayedFolder(const std::filesystem::path& path);

    /// At least one.
    const std::vector<Photo>& photos() const { return m_photos; }

private:
    std::vector<Photo> m_photos;
};

/// Plays a folder from its first picture, which has number 1, and begins again after the last.
class FolderPlayer : public PictureSource {
public:
    /// `cropped`: the geometry cuts its part out of each picture, with zeros where the picture has
    /// nothing; otherwise each picture is scaled to the geometry's size and the offsets mean nothing.
    FolderPlayer(std::shared_ptr<const PlayedFolder> folder, const Geometry& geometry, bool cropped);

    void paint(uint64_t number, std::span<std::byte> block) override;

private:
    std::vector<std::byte> laidOut(const Photo& photo) const;

    const std::shared_ptr<const PlayedFolder> m_folder;
    const Geometry m_geometry;
    const bool m_cropped;
    std::vector<std::vector<std::byte>> m_pictures;   // as they go into a block; empty until first shown
};

}   // namespace orvo::sim

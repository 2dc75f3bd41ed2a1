#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "sim/pictures/PixelFormat.h"

namespace orvo::sim {

/// A recorded picture: PNG, JPEG, PGM or PPM, with 8 or 16 bits a sample.
class Photo {
public:
    /// Reads the file at `path`. Throws std::runtime_error with the path and what is wrong with it.
    static Photo read(const std::string& path);

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

}   // namespace orvo::sim

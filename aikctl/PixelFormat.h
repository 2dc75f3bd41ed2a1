#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orvo::aikctl {

/// A picture as people look at it: 8 bits a sample, 1 sample a pixel (grey) or 3 (red, green, blue), rows
/// from the top without padding.
struct Picture {
    uint32_t width = 0;
    uint32_t height = 0;
    uint32_t samples = 1;
    std::vector<uint8_t> bytes;
};

/// One way in which the bytes of an image make a picture. The code alone doesn't tell it, see
/// AIK_PIXEL_... in aik/aik.h.
struct PixelFormat {
    int32_t code;
    uint64_t bytesPerPixel;
    bool isPlanar;   // "Transformation" is "RGB8PackedToPlanar"
    const char* name;
    /// Wants width x height x bytesPerPixel bytes. Of 16 bits a sample it keeps the upper 8.
    Picture (*toPicture)(std::span<const uint8_t> image, uint32_t width, uint32_t height);
};

/// Null if those bytes make no picture: no code or an unknown one, or a split of bytes that were no colours.
const PixelFormat* findPixelFormat(std::optional<int32_t> code, uint64_t bytesPerPixel, bool isPlanar);

/// For people: the format's name, if it has one, and the code.
std::string describePixelFormat(std::optional<int32_t> code, uint64_t bytesPerPixel, bool isPlanar);

}   // namespace orvo::aikctl

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "aik/aik.hpp"
#include "aikctl/pictures/Picture.h"

namespace orvo::aikctl {

/// A way in which the bytes of an image make a picture. The code alone doesn't tell; see AIK_PIXEL_... in
/// aik/aik.h.
struct PixelFormat {
    int32_t code;
    uint64_t bytesPerPixel;
    bool isPlanar;   // "Transformation" is "RGB8PackedToPlanar"
    const char* name;
    Picture (*toPicture)(const aik::Picture& fetched);
};

/// Null if these bytes make no picture: the code is missing or unknown, or what was split by threes is not
/// three colours.
const PixelFormat* findPixelFormat(std::optional<int32_t> code, uint64_t bytesPerPixel, bool isPlanar);

/// For people: the format's name, if it has one, and the code.
std::string describePixelFormat(std::optional<int32_t> code, uint64_t bytesPerPixel, bool isPlanar);

}   // namespace orvo::aikctl

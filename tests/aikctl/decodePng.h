#pragma once

#include <cstdint>
#include <filesystem>

#include <stb/stb_image.h>

#include "aikctl/pictures/Picture.h"

namespace orvo::aikctl {

inline bool operator==(const Picture& a, const Picture& b)
{
    return a.width == b.width && a.height == b.height && a.samples == b.samples && a.bytes == b.bytes;
}

/// What a PNG file shows; a picture without pixels if it is none.
inline Picture decodePng(const std::filesystem::path& file)
{
    int width = 0;
    int height = 0;
    int samples = 0;
    uint8_t* const pixels = stbi_load(file.string().c_str(), &width, &height, &samples, 0);
    if (!pixels)
        return {};
    const auto size = static_cast<size_t>(width) * static_cast<size_t>(height) * static_cast<size_t>(samples);
    Picture picture{static_cast<uint32_t>(width),
                    static_cast<uint32_t>(height),
                    static_cast<uint32_t>(samples),
                    {pixels, pixels + size}};
    stbi_image_free(pixels);
    return picture;
}

}   // namespace orvo::aikctl

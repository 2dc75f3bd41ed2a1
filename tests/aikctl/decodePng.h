#pragma once

#include <cstdint>
#include <fstream>
#include <iterator>
#include <span>
#include <string>
#include <vector>

#include <stb/stb_image.h>

#include "aikctl/pictures/PixelFormat.h"

namespace orvo::aikctl {

inline bool operator==(const Picture& a, const Picture& b)
{
    return a.width == b.width && a.height == b.height && a.samples == b.samples && a.bytes == b.bytes;
}

/// What a PNG's content shows; a picture without pixels if it is none.
inline Picture decodePng(std::span<const uint8_t> file)
{
    int width = 0;
    int height = 0;
    int samples = 0;
    uint8_t* const pixels =
        stbi_load_from_memory(file.data(), static_cast<int>(file.size()), &width, &height, &samples, 0);
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

inline std::vector<uint8_t> readBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

}   // namespace orvo::aikctl

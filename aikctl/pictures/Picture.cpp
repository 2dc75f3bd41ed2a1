#include "aikctl/pictures/Picture.h"

#include <limits>
#include <stdexcept>

#include <stb/stb_image_write.h>

namespace orvo::aikctl {

namespace {

void append(void* content, void* data, int size)
{
    const auto* const bytes = static_cast<const uint8_t*>(data);
    auto& file = *static_cast<std::vector<uint8_t>*>(content);
    file.insert(file.end(), bytes, bytes + size);
}

}   // namespace

std::vector<uint8_t> encodePng(const Picture& picture)
{
    // The encoder counts in int, and a row has one byte more than its samples.
    const uint64_t encoded = (uint64_t{picture.width} * picture.samples + 1) * picture.height;
    if (picture.bytes.empty() || encoded > uint64_t{std::numeric_limits<int>::max()})
        throw std::runtime_error("A picture of " + std::to_string(picture.width) + " x " +
                                 std::to_string(picture.height) + " can't be a PNG");
    std::vector<uint8_t> file;
    const int done = stbi_write_png_to_func(append, &file, static_cast<int>(picture.width),
                                            static_cast<int>(picture.height),
                                            static_cast<int>(picture.samples), picture.bytes.data(), 0);
    if (done == 0)
        throw std::runtime_error("Out of memory while encoding a PNG");
    return file;
}

}   // namespace orvo::aikctl

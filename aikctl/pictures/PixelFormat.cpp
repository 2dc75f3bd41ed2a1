#include "aikctl/pictures/PixelFormat.h"

#include <algorithm>
#include <iterator>

#include "aik/aik.h"

namespace orvo::aikctl {

namespace {

// Takes from each pixel the bytes at these offsets, in this order.
template <size_t BytesPerPixel, size_t... Offsets>
Picture pick(std::span<const uint8_t> image, uint32_t width, uint32_t height)
{
    Picture picture{width, height, sizeof...(Offsets), {}};
    picture.bytes.reserve(image.size() / BytesPerPixel * sizeof...(Offsets));
    for (size_t pixel = 0; pixel + BytesPerPixel <= image.size(); pixel += BytesPerPixel)
        (picture.bytes.push_back(image[pixel + Offsets]), ...);
    return picture;
}

// The image is three planes, one after the other: red, green, blue.
Picture joinPlanes(std::span<const uint8_t> image, uint32_t width, uint32_t height)
{
    const size_t pixels = image.size() / 3;
    Picture picture{width, height, 3, {}};
    picture.bytes.reserve(3 * pixels);
    for (size_t pixel = 0; pixel < pixels; ++pixel)
        for (size_t plane = 0; plane < 3; ++plane)
            picture.bytes.push_back(image[plane * pixels + pixel]);
    return picture;
}

// A pixel of 6 bytes was split like two of 3: each plane is twice as wide and mixes the bytes of two colours.
Picture stackPlanes(std::span<const uint8_t> image, uint32_t width, uint32_t height)
{
    return {2 * width, 3 * height, 1, {image.begin(), image.end()}};
}

// What is in no row is saved raw.
constexpr PixelFormat kPixelFormats[] = {
    {AIK_PIXEL_MONO8, 1, false, "grey, 8 bits", pick<1, 0>},
    {AIK_PIXEL_MONO16, 2, false, "grey, 16 bits", pick<2, 1>},
    {AIK_PIXEL_BGR8, 3, false, "colour, 8 bits", pick<3, 2, 1, 0>},
    {AIK_PIXEL_BGRX8, 4, false, "colour and filler, 8 bits", pick<4, 2, 1, 0>},
    {AIK_PIXEL_BGR16, 6, false, "colour, 16 bits", pick<6, 5, 3, 1>},
    {AIK_PIXEL_PLANAR, 3, true, "colour planes, 8 bits", joinPlanes},
    {AIK_PIXEL_PLANAR, 6, true, "byte planes of 16-bit colour", stackPlanes},
};

}   // namespace

const PixelFormat* findPixelFormat(std::optional<int32_t> code, uint64_t bytesPerPixel, bool isPlanar)
{
    const auto* const format =
        std::find_if(std::begin(kPixelFormats), std::end(kPixelFormats), [&](const PixelFormat& row) {
            return row.code == code && row.bytesPerPixel == bytesPerPixel && row.isPlanar == isPlanar;
        });
    return format == std::end(kPixelFormats) ? nullptr : format;
}

std::string describePixelFormat(std::optional<int32_t> code, uint64_t bytesPerPixel, bool isPlanar)
{
    const PixelFormat* const format = findPixelFormat(code, bytesPerPixel, isPlanar);
    const std::string bytes = std::to_string(bytesPerPixel) +
                              (bytesPerPixel == 1 ? " byte a pixel" : " bytes a pixel") +
                              (isPlanar ? ", split by threes" : "");
    return (format ? format->name : bytes) + " (code " + (code ? std::to_string(*code) : "unknown") + ")";
}

}   // namespace orvo::aikctl

#include "aikctl/pictures/PixelFormat.h"

#include <algorithm>
#include <iterator>

#include "aik/aik.h"

namespace orvo::aikctl {

namespace {

// Takes from each pixel the bytes at these offsets, in this order.
template <size_t BytesPerPixel, size_t... Offsets>
void pickRow(const Picture& picture, size_t row, uint8_t* out)
{
    const uint8_t* pixel = picture.image + row * picture.width * BytesPerPixel;
    for (size_t column = 0; column < picture.width; ++column, pixel += BytesPerPixel)
        ((*out++ = pixel[Offsets]), ...);
}

template <uint32_t Bits, size_t BytesPerPixel, size_t... Offsets>
Picture pick(const aik::Picture& fetched)
{
    return {fetched.width, fetched.height,       sizeof...(Offsets) * 8 / Bits,
            Bits,          fetched.bytes.data(), pickRow<BytesPerPixel, Offsets...>};
}

void joinRow(const Picture& picture, size_t row, uint8_t* out)
{
    const size_t plane = size_t{picture.width} * picture.height;
    const uint8_t* red = picture.image + row * picture.width;
    for (size_t column = 0; column < picture.width; ++column, ++red)
        for (size_t colour = 0; colour < 3; ++colour)
            *out++ = red[colour * plane];
}

// The image is three planes, one after the other: red, green, blue.
Picture joinPlanes(const aik::Picture& fetched)
{
    return {fetched.width, fetched.height, 3, 8, fetched.bytes.data(), joinRow};
}

// A pixel of 6 bytes was split like two of 3: each plane is twice as wide and mixes the bytes of two colours.
Picture stackPlanes(const aik::Picture& fetched)
{
    return {2 * fetched.width, 3 * fetched.height, 1, 8, fetched.bytes.data(), pickRow<1, 0>};
}

// What is in no row is saved raw.
constexpr PixelFormat kPixelFormats[] = {
    {AIK_PIXEL_MONO8, 1, false, "grey, 8 bits", pick<8, 1, 0>},
    {AIK_PIXEL_MONO16, 2, false, "grey, 16 bits", pick<16, 2, 1, 0>},
    {AIK_PIXEL_BGR8, 3, false, "colour, 8 bits", pick<8, 3, 2, 1, 0>},
    {AIK_PIXEL_BGRX8, 4, false, "colour and filler, 8 bits", pick<8, 4, 2, 1, 0>},
    {AIK_PIXEL_BGR16, 6, false, "colour, 16 bits", pick<16, 6, 5, 4, 3, 2, 1, 0>},
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

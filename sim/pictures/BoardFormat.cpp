#include "sim/pictures/BoardFormat.h"

#include <initializer_list>

namespace orvo::sim {

namespace {

struct FormatRow {
    PixelFormat format;
    size_t bytes;
    bool grey;
};

constexpr FormatRow kFormats[] = {
    {PixelFormat::Grey16, 2, true},    {PixelFormat::Colour24, 3, false}, {PixelFormat::Grey8, 1, true},
    {PixelFormat::Colour32, 4, false}, {PixelFormat::Grey8x5, 5, true},   {PixelFormat::Colour48, 6, false},
};

const FormatRow& rowOf(PixelFormat format)
{
    return kFormats[static_cast<size_t>(format) - 1];   // the numbers run from 1 without a gap
}

/// The usual weights of the eye for red, green and blue, in 256ths: equal colours give exactly their level.
uint16_t greyOf(Pixel pixel)
{
    return static_cast<uint16_t>((77u * pixel.red + 150u * pixel.green + 29u * pixel.blue) >> 8);
}

std::byte* put8(std::byte* at, std::initializer_list<uint16_t> levels)
{
    for (const uint16_t level : levels)
        *at++ = static_cast<std::byte>(level >> 8);
    return at;
}

std::byte* put16(std::byte* at, std::initializer_list<uint16_t> levels)
{
    for (const uint16_t level : levels) {
        *at++ = static_cast<std::byte>(level & 0xFF);
        *at++ = static_cast<std::byte>(level >> 8);
    }
    return at;
}

}   // namespace

std::optional<PixelFormat> pixelFormatOf(int64_t number)
{
    for (const FormatRow& row : kFormats)
        if (static_cast<int64_t>(row.format) == number)
            return row.format;
    return std::nullopt;
}

size_t bytesPerPixel(PixelFormat format)
{
    return rowOf(format).bytes;
}

bool isGrey(PixelFormat format)
{
    return rowOf(format).grey;
}

std::byte* layOut(PixelFormat format, Pixel pixel, std::byte* at)
{
    const uint16_t grey = greyOf(pixel);
    switch (format) {
    case PixelFormat::Grey16:
        return put16(at, {grey});
    case PixelFormat::Colour24:
        return put8(at, {pixel.blue, pixel.green, pixel.red});
    case PixelFormat::Grey8:
        return put8(at, {grey});
    case PixelFormat::Colour32:
        return put8(at, {pixel.blue, pixel.green, pixel.red, 0xFFFF});
    case PixelFormat::Grey8x5:
        return put8(at, {grey, grey, grey, grey, grey});
    case PixelFormat::Colour48:
        return put16(at, {pixel.blue, pixel.green, pixel.red});
    }
    return at;
}

}   // namespace orvo::sim

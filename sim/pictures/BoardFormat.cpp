#include "sim/pictures/BoardFormat.h"

#include <initializer_list>

namespace orvo::sim {

namespace {

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

/// Little-endian.
std::byte* put16(std::byte* at, std::initializer_list<uint16_t> levels)
{
    for (const uint16_t level : levels) {
        *at++ = static_cast<std::byte>(level & 0xFF);
        *at++ = static_cast<std::byte>(level >> 8);
    }
    return at;
}

std::byte* grey16(Pixel pixel, std::byte* at)
{
    return put16(at, {greyOf(pixel)});
}

std::byte* colour24(Pixel pixel, std::byte* at)
{
    return put8(at, {pixel.blue, pixel.green, pixel.red});
}

std::byte* grey8(Pixel pixel, std::byte* at)
{
    return put8(at, {greyOf(pixel)});
}

std::byte* colour32(Pixel pixel, std::byte* at)
{
    return put8(at, {pixel.blue, pixel.green, pixel.red, 0xFFFF});
}

std::byte* grey8x5(Pixel pixel, std::byte* at)
{
    const uint16_t grey = greyOf(pixel);
    return put8(at, {grey, grey, grey, grey, grey});
}

std::byte* colour48(Pixel pixel, std::byte* at)
{
    return put16(at, {pixel.blue, pixel.green, pixel.red});
}

// A new format is a row here, with the function that lays out its pixels.
constexpr BoardFormat kFormats[] = {
    {kGrey16, "Grey16", 2, true, grey16}, {kColour24, "Colour24", 3, false, colour24},
    {kGrey8, "Grey8", 1, true, grey8},    {4, "Colour32", 4, false, colour32},
    {5, "Grey8x5", 5, true, grey8x5},     {kColour48, "Colour48", 6, false, colour48},
};

}   // namespace

std::span<const BoardFormat> boardFormats()
{
    return kFormats;
}

const BoardFormat* findBoardFormat(int64_t number)
{
    for (const BoardFormat& format : kFormats)
        if (format.number == number)
            return &format;
    return nullptr;
}

}   // namespace orvo::sim

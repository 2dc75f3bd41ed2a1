#include "aikctl/pictures/PictureFile.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>
#include <stdexcept>

#include "aikctl/pictures/BigEndian.h"
#include "aikctl/pictures/PixelFormat.h"
#include "aikctl/pictures/PngFile.h"

namespace orvo::aikctl {

namespace {

void appendRows(std::vector<uint8_t>& file, const Picture& picture)
{
    size_t end = file.size();
    file.resize(end + picture.rowBytes() * picture.height);
    for (uint32_t row = 0; row < picture.height; ++row, end += picture.rowBytes())
        picture.copyRow(picture, row, file.data() + end);
}

void encodePng(const Picture& picture, const Encoding& encoding, std::vector<uint8_t>& file)
{
    writePng(picture, encoding.compression, file);
}

void encodePgm(const Picture& picture, const Encoding&, std::vector<uint8_t>& file)
{
    const std::string header = std::string(picture.samples == 3 ? "P6" : "P5") + "\n" +
                               std::to_string(picture.width) + " " + std::to_string(picture.height) + "\n" +
                               std::to_string((1 << picture.bits) - 1) + "\n";
    file.assign(header.begin(), header.end());
    appendRows(file, picture);
}

// A TIFF with its upper bytes first, uncompressed, in one strip.
void encodeTiff(const Picture& picture, const Encoding&, std::vector<uint8_t>& file)
{
    constexpr uint16_t kShort = 3;
    constexpr uint16_t kLong = 4;
    constexpr uint16_t kRational = 5;
    struct Entry {
        uint16_t tag;
        uint16_t type;
        uint32_t count;
        uint32_t value;   // or, if it takes more than four bytes, its place in the file
    };
    constexpr uint32_t kEntries = 12;
    constexpr uint32_t kResolution = 8 + 2 + 12 * kEntries + 4;   // after the entries: 1/1,
    constexpr uint32_t kBits = kResolution + 8;                   // the bits of three samples,
    constexpr uint32_t kPixels = kBits + 6;                       // and the pixels
    const uint64_t size = uint64_t{picture.rowBytes()} * picture.height;
    if (size > std::numeric_limits<uint32_t>::max() - kPixels)
        throw std::runtime_error("A picture of more than 4 GiB can't be a TIFF");
    const bool isColour = picture.samples == 3;
    const std::array<Entry, kEntries> entries = {{
        {256, kLong, 1, picture.width},
        {257, kLong, 1, picture.height},
        {258, kShort, picture.samples, isColour ? kBits : picture.bits << 16},
        {259, kShort, 1, 1U << 16},                     // no compression
        {262, kShort, 1, (isColour ? 2U : 1U) << 16},   // red, green and blue, or black is 0
        {273, kLong, 1, kPixels},
        {277, kShort, 1, picture.samples << 16},
        {278, kLong, 1, picture.height},   // all rows in one strip
        {279, kLong, 1, static_cast<uint32_t>(size)},
        {282, kRational, 1, kResolution},
        {283, kRational, 1, kResolution},
        {296, kShort, 1, 1U << 16},   // the resolution has no unit
    }};
    file = {'M', 'M', 0, 42, 0, 0, 0, 8};
    appendBigEndian(file, static_cast<uint16_t>(kEntries));
    for (const Entry& entry : entries) {
        appendBigEndian(file, entry.tag);
        appendBigEndian(file, entry.type);
        appendBigEndian(file, entry.count);
        appendBigEndian(file, entry.value);
    }
    appendBigEndian<uint32_t>(file, 0);   // no other picture
    appendBigEndian<uint32_t>(file, 1);
    appendBigEndian<uint32_t>(file, 1);
    for (int sample = 0; sample < 3; ++sample)
        appendBigEndian(file, static_cast<uint16_t>(picture.bits));
    appendRows(file, picture);
}

struct FormatRow {
    FileFormat format;
    const char* name;
    const char* greyEnding;
    const char* colourEnding;
    void (*encode)(const Picture& picture, const Encoding& encoding, std::vector<uint8_t>& file);
};

// What is in no row keeps the bytes as they are.
constexpr FormatRow kFormats[] = {
    {FileFormat::Png, "PNG", "png", "png", encodePng},
    {FileFormat::Pgm, "PGM", "pgm", "ppm", encodePgm},
    {FileFormat::Tiff, "TIFF", "tiff", "tiff", encodeTiff},
};

}   // namespace

void encode(const aik::Picture& fetched, const Encoding& encoding, PictureFile& file)
{
    if (fetched.bytes.empty())
        throw std::runtime_error("A picture of " + std::to_string(fetched.width) + " x " +
                                 std::to_string(fetched.height) + " has no pixels");
    const auto* const row = std::find_if(std::begin(kFormats), std::end(kFormats),
                                         [&](const FormatRow& one) { return one.format == encoding.format; });
    const bool isRaw = row == std::end(kFormats);
    const PixelFormat* const format =
        findPixelFormat(fetched.format, fetched.bytesPerPixel, fetched.isPlanar);
    file.note.clear();
    if (!isRaw && format) {
        const Picture picture = format->toPicture(fetched);
        file.ending = picture.samples == 3 ? row->colourEnding : row->greyEnding;
        row->encode(picture, encoding, file.bytes);
        return;
    }
    if (!isRaw)
        file.note = std::string("saved raw, for no ") + row->name + " can show this: " +
                    describePixelFormat(fetched.format, fetched.bytesPerPixel, fetched.isPlanar);
    file.ending = "raw";
    file.bytes.assign(fetched.bytes.begin(), fetched.bytes.end());
}

}   // namespace orvo::aikctl

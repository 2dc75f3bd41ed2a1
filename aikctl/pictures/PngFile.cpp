#include "aikctl/pictures/PngFile.h"

#include <algorithm>
#include <memory>
#include <new>
#include <stdexcept>
#include <string>

#include <spng.h>
#include <zlib.h>

namespace orvo::aikctl {

namespace {

struct Compression {
    int level;   // of zlib
    int strategy;
    int filters;
};

// Rows of photographs hardly repeat themselves, even after a filter: codes for single bytes are as small as what
// zlib finds in ten times as long. Its higher levels are for graphics; those below 4 also take repetitions by chance,
// which makes a photograph larger. It stores fastest what no filter touched.
Compression compressionOf(int wanted)
{
    if (wanted == 0)
        return {0, Z_DEFAULT_STRATEGY, SPNG_FILTER_CHOICE_NONE};
    if (wanted == 1)
        return {1, Z_HUFFMAN_ONLY, SPNG_FILTER_CHOICE_PAETH};
    return {std::max(wanted, 4), Z_FILTERED, SPNG_FILTER_CHOICE_ALL};
}

void require(int error)
{
    if (error == SPNG_EMEM)
        throw std::bad_alloc();
    if (error != SPNG_OK)
        throw std::runtime_error(std::string("The picture can't be a PNG: ") + spng_strerror(error));
}

int append(spng_ctx* /*context*/, void* file, void* bytes, size_t length)
{
    const auto* const first = static_cast<const uint8_t*>(bytes);
    auto& whole = *static_cast<std::vector<uint8_t>*>(file);
    try {
        whole.insert(whole.end(), first, first + length);
    } catch (const std::bad_alloc&) {
        return SPNG_EMEM;
    }
    return SPNG_OK;
}

}   // namespace

void writePng(const Picture& picture, int compression, std::vector<uint8_t>& file)
{
    const std::unique_ptr<spng_ctx, void (*)(spng_ctx*)> owner(spng_ctx_new(SPNG_CTX_ENCODER), spng_ctx_free);
    spng_ctx* const context = owner.get();
    if (!context)
        throw std::bad_alloc();
    file.clear();
    require(spng_set_png_stream(context, append, &file));

    spng_ihdr header{};
    header.width = picture.width;
    header.height = picture.height;
    header.bit_depth = static_cast<uint8_t>(picture.bits);
    header.color_type = picture.samples == 3 ? SPNG_COLOR_TYPE_TRUECOLOR : SPNG_COLOR_TYPE_GRAYSCALE;
    require(spng_set_ihdr(context, &header));
    const Compression chosen = compressionOf(compression);
    require(spng_set_option(context, SPNG_IMG_COMPRESSION_LEVEL, chosen.level));
    require(spng_set_option(context, SPNG_IMG_COMPRESSION_STRATEGY, chosen.strategy));
    require(spng_set_option(context, SPNG_FILTER_CHOICE, chosen.filters));

    // Raw: the upper byte of 16 bits comes first, as in the file.
    require(
        spng_encode_image(context, nullptr, 0, SPNG_FMT_RAW, SPNG_ENCODE_PROGRESSIVE | SPNG_ENCODE_FINALIZE));
    std::vector<uint8_t> row(picture.rowBytes());
    for (uint32_t number = 0; number < picture.height; ++number) {
        picture.copyRow(picture, number, row.data());
        const int error = spng_encode_row(context, row.data(), row.size());
        require(error == SPNG_EOI ? SPNG_OK : error);   // with the last row
    }
}

}   // namespace orvo::aikctl

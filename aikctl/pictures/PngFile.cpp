#include "aikctl/pictures/PngFile.h"

#include <algorithm>
#include <limits>
#include <new>
#include <span>
#include <stdexcept>
#include <string_view>

#include <zlib.h>

#include "aikctl/pictures/BigEndian.h"
#include "aikctl/pictures/LiteralDeflate.h"
#include "aikctl/pictures/PngFilter.h"

namespace orvo::aikctl {

namespace {

constexpr size_t kBlockBytes = size_t{128} * 1024;   // stays in the processor's cache

// A chunk has less than 2 GiB, and noise grows a little.
constexpr uint64_t kMostBytes = std::numeric_limits<int32_t>::max() - (1 << 24);

constexpr PngFilter kNoFilter[] = {PngFilter::None};
constexpr PngFilter kFastFilter[] = {PngFilter::Paeth};   // of a photograph, it leaves the least
constexpr PngFilter kAllFilters[] = {PngFilter::Paeth, PngFilter::None, PngFilter::Left, PngFilter::Above,
                                     PngFilter::Average};

std::span<const PngFilter> filtersFor(int compression)
{
    if (compression == 0)
        return kNoFilter;
    return compression == kFastCompression ? std::span<const PngFilter>(kFastFilter) : kAllFilters;
}

/// The rows of a picture, each by the filter that promises the smallest file, in blocks of whole rows.
class FilteredRows {
public:
    FilteredRows(const Picture& picture, std::span<const PngFilter> filters)
        : m_picture(picture),
          m_filters(filters),
          m_row(picture.pixelBytes() + picture.rowBytes()),
          m_above(m_row.size()),
          m_filtered(picture.rowBytes() + 1),
          m_rowsOfBlock(std::max<size_t>(1, kBlockBytes / m_filtered.size()))
    {}

    bool isAtEnd() const { return m_next == m_picture.height; }
    /// Valid until the next call.
    std::span<const uint8_t> nextBlock()
    {
        const size_t rows = std::min<size_t>(m_rowsOfBlock, m_picture.height - m_next);
        m_block.resize(rows * m_filtered.size());
        for (size_t row = 0; row < rows; ++row)
            filterNext(m_block.data() + row * m_filtered.size());
        return m_block;
    }

private:
    void filterNext(uint8_t* out)
    {
        m_row.swap(m_above);
        m_picture.copyRow(m_picture, m_next++, m_row.data() + m_picture.pixelBytes());
        filter(m_filters.front(), out);
        if (m_filters.size() == 1)
            return;
        uint64_t least = distanceFromZero(out + 1, m_picture.rowBytes());
        for (const PngFilter candidate : m_filters.subspan(1)) {
            filter(candidate, m_filtered.data());
            const uint64_t distance = distanceFromZero(m_filtered.data() + 1, m_picture.rowBytes());
            if (distance < least)
                std::copy(m_filtered.begin(), m_filtered.end(), out);
            least = std::min(least, distance);
        }
    }
    void filter(PngFilter filter, uint8_t* out) const
    {
        const size_t pixel = m_picture.pixelBytes();
        *out = static_cast<uint8_t>(filter);
        filterRow(filter, m_row.data() + pixel, m_above.data() + pixel, m_picture.rowBytes(), pixel, out + 1);
    }

    const Picture& m_picture;
    const std::span<const PngFilter> m_filters;
    std::vector<uint8_t> m_row;     // after a pixel of zeros
    std::vector<uint8_t> m_above;   // likewise
    std::vector<uint8_t> m_filtered;
    const size_t m_rowsOfBlock;
    std::vector<uint8_t> m_block;
    uint32_t m_next = 0;
};

/// zlib, appending to a vector.
class Deflate {
public:
    Deflate(std::vector<uint8_t>& out, int compression, uint64_t size) : m_out(out)
    {
        // Filtered rows have few real repetitions. zlib's levels 1 to 3 take chance ones, too, which makes a file
        // larger than no repetitions at all.
        const int level = compression == 0 ? 0 : std::max(compression, 4);
        if (deflateInit2(&m_stream, level, Z_DEFLATED, MAX_WBITS, MAX_MEM_LEVEL, Z_FILTERED) != Z_OK)
            throw std::bad_alloc();
        const size_t begin = out.size();
        out.resize(begin + deflateBound(&m_stream, static_cast<uLong>(size)));
        m_stream.next_out = out.data() + begin;
        m_stream.avail_out = static_cast<uInt>(out.size() - begin);
    }
    Deflate(const Deflate&) = delete;
    Deflate& operator=(const Deflate&) = delete;
    ~Deflate() { deflateEnd(&m_stream); }

    void add(std::span<const uint8_t> bytes, bool isLast)
    {
        m_stream.next_in = const_cast<uint8_t*>(bytes.data());
        m_stream.avail_in = static_cast<uInt>(bytes.size());
        deflate(&m_stream, isLast ? Z_FINISH : Z_NO_FLUSH);
        if (isLast)
            m_out.resize(m_out.size() - m_stream.avail_out);
    }

private:
    std::vector<uint8_t>& m_out;
    z_stream m_stream{};
};

template <typename Stream>
void compress(FilteredRows& rows, Stream stream)
{
    while (!rows.isAtEnd()) {
        const std::span<const uint8_t> block = rows.nextBlock();
        stream.add(block, rows.isAtEnd());
    }
}

/// A part of the file: what is appended to it until end().
class Chunk {
public:
    Chunk(std::vector<uint8_t>& file, std::string_view name) : m_file(file), m_begin(file.size())
    {
        appendBigEndian<uint32_t>(file, 0);   // the length, once it is known
        file.insert(file.end(), name.begin(), name.end());
    }
    void end()
    {
        const size_t length = m_file.size() - m_begin - 8;
        for (size_t at = 0; at < 4; ++at)
            m_file[m_begin + at] = static_cast<uint8_t>(length >> (24 - 8 * at));
        const uint8_t* const checked = m_file.data() + m_begin + 4;
        appendBigEndian(m_file, static_cast<uint32_t>(crc32_z(0, checked, length + 4)));
    }

private:
    std::vector<uint8_t>& m_file;
    const size_t m_begin;
};

}   // namespace

void writePng(const Picture& picture, int compression, std::vector<uint8_t>& file)
{
    const uint64_t size = uint64_t{picture.rowBytes() + 1} * picture.height;
    if (size > kMostBytes)
        throw std::runtime_error("A picture of about 2 GiB or more can't be a PNG");

    file = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    Chunk header(file, "IHDR");
    appendBigEndian(file, picture.width);
    appendBigEndian(file, picture.height);
    appendBigEndian(file, static_cast<uint8_t>(picture.bits));
    appendBigEndian<uint8_t>(file, picture.samples == 3 ? 2 : 0);   // red, green and blue, or grey
    file.insert(file.end(), {0, 0, 0});                             // deflate, filters, not interlaced
    header.end();

    Chunk data(file, "IDAT");
    FilteredRows rows(picture, filtersFor(compression));
    if (compression == kFastCompression)
        compress(rows, LiteralDeflate(file));
    else
        compress(rows, Deflate(file, compression, size));
    data.end();

    Chunk(file, "IEND").end();
}

}   // namespace orvo::aikctl

#include "aikctl/grab/ImageReader.h"

#include <string_view>

#include "aik/aik.h"

namespace orvo::aikctl {

namespace {

constexpr std::string_view kRingIsFull = "Acquisistion is not setup";   // sic

// The mark of a byte is hashed from its position, so that no picture has this pattern by chance.
uint8_t markAt(size_t position)
{
    uint64_t mixed = (position + 1) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    return static_cast<uint8_t>(mixed >> 56);
}

void markBuffer(std::span<uint8_t> buffer)
{
    for (size_t position = 0; position < buffer.size(); ++position)
        buffer[position] = markAt(position);
}

// How many bytes a call has written into a marked buffer, which the call doesn't tell. Too small if the last
// byte written happens to equal its mark.
size_t writtenExtent(std::span<const uint8_t> buffer)
{
    size_t extent = buffer.size();
    while (extent > 0 && buffer[extent - 1] == markAt(extent - 1))
        --extent;
    return extent;
}

}   // namespace

void ImageReader::allocate()
{
    const uint64_t pixels = uint64_t{m_channel.width()} * m_channel.height();
    // Never empty: the adapter refuses a null pointer.
    m_buffer.resize(pixels * AIK_MAX_BYTES_PER_PIXEL + 1);
    markBuffer(m_buffer);
}

std::optional<std::span<const uint8_t>> ImageReader::next()
{
    if ((m_isTimed || !m_pixelCode) && !askForAttributes())
        return std::nullopt;   // without a fetch: it could get a picture that came only now
    if (!m_channel.getImage(m_buffer.data()))
        return std::nullopt;
    if (!m_isMeasured)
        measure();
    return std::span<const uint8_t>(m_buffer).first(m_imageSize);
}

bool ImageReader::askForAttributes()
{
    m_timestamp.reset();
    try {
        const auto attributes = m_channel.attributes();
        if (!attributes)
            return false;
        m_pixelCode = attributes->pixelFormat;
        if (m_isTimed)
            m_timestamp = attributes->timestamp;
        return true;
    } catch (const AdapterFailure& failure) {
        if (failure.what() != kRingIsFull)
            throw;
        return true;   // next() asks again once an image was fetched from the full ring
    }
}

void ImageReader::measure()
{
    m_isMeasured = true;
    const uint64_t pixels = uint64_t{m_channel.width()} * m_channel.height();
    if (pixels == 0)
        return;
    // Rounded up: the last bytes may equal their marks, and a split into planes omits up to two bytes.
    m_bytesPerPixel = (writtenExtent(m_buffer) + pixels - 1) / pixels;
    m_imageSize = pixels * m_bytesPerPixel;
    if (m_isPlanar)
        m_imageSize -= m_imageSize % 3;
}

}   // namespace orvo::aikctl

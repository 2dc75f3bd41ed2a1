#include "aikctl/ImageReader.h"

#include <string_view>

#include "aik/aik.h"
#include "aikctl/writtenExtent.h"

namespace orvo::aikctl {

namespace {

constexpr std::string_view kRingIsFull = "Acquisistion is not setup";   // sic

}   // namespace

void ImageReader::allocate()
{
    const uint64_t pixels = uint64_t{m_channel.width()} * m_channel.height();
    m_buffer.resize(pixels * AIK_MAX_BYTES_PER_PIXEL +
                    1);   // never empty: the adapter refuses a null pointer
    markBuffer(m_buffer);
}

std::optional<std::span<const uint8_t>> ImageReader::next()
{
    if ((m_isTimed || !m_pixelCode) && !askForAttributes())
        return std::nullopt;   // and no fetch, to which a picture could come meanwhile
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
        return true;   // asked again once an image was fetched from the full ring
    }
}

void ImageReader::measure()
{
    m_isMeasured = true;
    const uint64_t pixels = uint64_t{m_channel.width()} * m_channel.height();
    if (pixels == 0)
        return;
    // Rounded up: the last bytes may equal their marks, and a planar split leaves up to two bytes out.
    m_bytesPerPixel = (writtenExtent(m_buffer) + pixels - 1) / pixels;
    m_imageSize = pixels * m_bytesPerPixel;
    if (m_isPlanar)
        m_imageSize -= m_imageSize % 3;
}

}   // namespace orvo::aikctl

#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "aikctl/adapter/Channel.h"

namespace orvo::aikctl {

/// Fetches the images of one channel. The first one tells what their bytes are: the adapter names the pixel
/// code, and how much it has written tells the number of bytes.
/// Threads: one at a time.
class ImageReader {
public:
    /// `isPlanar`: "Transformation" is "RGB8PackedToPlanar". `isTimed`: every image's time stamp is wanted,
    /// which costs another call each. The channel outlives the reader.
    ImageReader(Channel& channel, bool isPlanar, bool isTimed = false)
        : m_channel(channel), m_isPlanar(isPlanar), m_isTimed(isTimed)
    {}

    /// Makes room for the largest image that the channel's ring can hold. Comes before the first next().
    void allocate();

    /// The bytes of the next image, valid until the next call; none if no image came within 7 ms. Throws
    /// AdapterFailure.
    std::optional<std::span<const uint8_t>> next();

    /// One of AIK_PIXEL_...; none before the first image, and as long as the adapter refuses to tell because
    /// the board has filled the whole ring.
    std::optional<int32_t> pixelCode() const { return m_pixelCode; }
    /// Of the last image, in the board's ticks; none if it isn't wanted or the adapter refuses as above.
    std::optional<uint64_t> timestamp() const { return m_timestamp; }
    /// 0 before the first image and for images without pixels.
    uint64_t bytesPerPixel() const { return m_bytesPerPixel; }

private:
    bool askForAttributes();   // false if no image came
    void measure();

    Channel& m_channel;
    const bool m_isPlanar;
    const bool m_isTimed;
    std::vector<uint8_t> m_buffer;
    std::optional<int32_t> m_pixelCode;
    std::optional<uint64_t> m_timestamp;
    bool m_isMeasured = false;
    uint64_t m_bytesPerPixel = 0;
    size_t m_imageSize = 0;   // in bytes
};

}   // namespace orvo::aikctl

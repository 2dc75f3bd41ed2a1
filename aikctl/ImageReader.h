#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "aikctl/Channel.h"

namespace orvo::aikctl {

/// Fetches the images of one channel, and finds out with the first what their bytes are: the code comes from
/// the adapter, the number of bytes from a look at how much was written.
/// Threads: one at a time.
class ImageReader {
public:
    /// `isPlanar`: "Transformation" is "RGB8PackedToPlanar". `isTimed`: every image's time is wanted, which
    /// costs a call for each. The channel outlives the reader.
    ImageReader(Channel& channel, bool isPlanar, bool isTimed = false)
        : m_channel(channel), m_isPlanar(isPlanar), m_isTimed(isTimed)
    {}

    /// Makes room for the largest image that the channel's ring can hold. Before the first next().
    void allocate();

    /// The bytes of the next image, good until the next call; none if no image came in 7 ms. Throws
    /// AdapterFailure.
    std::optional<std::span<const uint8_t>> next();

    /// One of AIK_PIXEL_...; none before the first image, and after it as long as the adapter refuses to tell
    /// because the board has filled the whole ring.
    std::optional<int32_t> pixelCode() const { return m_pixelCode; }
    /// In the board's ticks, of the last image; none if it isn't wanted, or if the adapter refuses likewise.
    std::optional<uint64_t> timestamp() const { return m_timestamp; }
    /// From 1, or 0 before the first image and for images without pixels.
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

#include "aikctl/grab/ImageReader.h"

#include <cstring>

#include <gtest/gtest.h>

#include "aikctl/pictures/PixelFormat.h"

namespace orvo::aikctl {
namespace {

constexpr int32_t kImagePixels = 10;

// What an adapter answers next. No board would do it at the moment when a test needs it.
struct {
    bool isPending;
    bool isRingFull;
    int fetched;
} g_adapter;

int32_t answerAttributes(char* errstr, int64_t /*channelID*/, csAIK_ImageAttributes* attributes,
                         uint32_t* result)
{
    constexpr char kRingIsFull[] = "Acquisistion is not setup";
    *result = g_adapter.isPending ? AIK_ACQ_PENDING : AIK_ACQ_COMPLETED;
    attributes->pixelFormat = AIK_PIXEL_MONO16;
    if (!g_adapter.isRingFull)
        return AIK_OK;
    std::memcpy(errstr, kRingIsFull, sizeof(kRingIsFull));
    return AIK_FAILED;
}

// There is always an image: one may come right after the attributes were asked for in vain.
int32_t answerImage(char* /*errstr*/, int64_t /*channelID*/, void* image, uint32_t* result)
{
    *result = AIK_ACQ_COMPLETED;
    std::memset(image, ++g_adapter.fetched, size_t{2} * kImagePixels);
    return AIK_OK;
}

class Reader : public testing::Test {
protected:
    Reader()
    {
        g_adapter = {};
        m_exports.GetImageAttributes = answerAttributes;
        m_exports.GetImage = answerImage;
        m_exports.ReleaseVideoChannel = [](char*, int64_t) -> int32_t { return AIK_OK; };
        m_reader.allocate();
    }

    static csAIK_ChannelRecord record()
    {
        csAIK_ChannelRecord record{};
        record.channelID = 1;
        record.width = kImagePixels;
        record.height = 1;
        return record;
    }

    Exports m_exports;
    Channel m_channel{m_exports, 0, record(), ""};
    ImageReader m_reader{m_channel, false};
};

TEST_F(Reader, FetchesNoImageWithoutItsAttributes)
{
    g_adapter.isPending = true;
    EXPECT_FALSE(m_reader.next());
    EXPECT_EQ(g_adapter.fetched, 0);

    g_adapter.isPending = false;
    const auto image = m_reader.next();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), 2U * kImagePixels);
}

TEST_F(Reader, FetchesFromAFullRingAndAsksForTheFormatLater)
{
    g_adapter.isRingFull = true;
    ASSERT_TRUE(m_reader.next());
    EXPECT_EQ(describePixelFormat(m_reader.pixelCode(), 2, false), "2 bytes a pixel (code unknown)");

    g_adapter.isRingFull = false;
    ASSERT_TRUE(m_reader.next());
    EXPECT_EQ(m_reader.pixelCode(), AIK_PIXEL_MONO16);
}

}   // namespace
}   // namespace orvo::aikctl

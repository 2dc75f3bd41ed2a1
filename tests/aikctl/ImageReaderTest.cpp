#include "aikctl/grab/ImageReader.h"

#include <cstring>

#include <gtest/gtest.h>

namespace orvo::aikctl {
namespace {

constexpr int32_t kWidth = 5;
constexpr int32_t kHeight = 2;
constexpr size_t kPixels = 10;

// An adapter whose next answers the test sets: what no board does when a test would like it to.
struct {
    const char* attributesFailure = nullptr;
    int32_t pixelCode = 0;
    size_t imageSize = 0;
    bool isPending = false;
    int fetched = 0;
} g_adapter;

int32_t answerAttributes(char* errstr, int64_t /*channelID*/, csAIK_ImageAttributes* attributes,
                         uint32_t* result)
{
    *result = g_adapter.isPending ? AIK_ACQ_PENDING : AIK_ACQ_COMPLETED;
    if (g_adapter.attributesFailure) {
        std::memcpy(errstr, g_adapter.attributesFailure, std::strlen(g_adapter.attributesFailure) + 1);
        return AIK_FAILED;
    }
    attributes->pixelFormat = g_adapter.pixelCode;
    return AIK_OK;
}

// There is always an image: one may come just after the attributes were asked for in vain.
int32_t answerImage(char* /*errstr*/, int64_t /*channelID*/, void* image, uint32_t* result)
{
    *result = AIK_ACQ_COMPLETED;
    std::memset(image, ++g_adapter.fetched, g_adapter.imageSize);
    return AIK_OK;
}

int32_t answerRelease(char* /*errstr*/, int64_t /*channelID*/)
{
    return AIK_OK;
}

class Reader : public testing::Test {
protected:
    Reader()
    {
        g_adapter = {};
        m_exports.getImageAttributes = answerAttributes;
        m_exports.getImage = answerImage;
        m_exports.releaseVideoChannel = answerRelease;
    }

    static csAIK_ChannelRecord record()
    {
        csAIK_ChannelRecord record{};
        record.channelID = 1;
        record.width = kWidth;
        record.height = kHeight;
        return record;
    }

    Exports m_exports{};
    Channel m_channel{m_exports, 0, record(), ""};
};

TEST_F(Reader, FetchesNoImageThatItDidNotAskAbout)
{
    ImageReader reader(m_channel, false);
    reader.allocate();
    g_adapter.isPending = true;
    EXPECT_FALSE(reader.next());
    EXPECT_EQ(g_adapter.fetched, 0);

    g_adapter.isPending = false;
    g_adapter.imageSize = kPixels * 2;
    const auto image = reader.next();
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), g_adapter.imageSize);
    EXPECT_EQ(reader.pixelCode(), 0);
}

TEST_F(Reader, FetchesFromAFullRingAndAsksForTheFormatLater)
{
    ImageReader reader(m_channel, false);
    reader.allocate();
    g_adapter.imageSize = kPixels;
    g_adapter.pixelCode = AIK_PIXEL_MONO8;
    g_adapter.attributesFailure = "Acquisistion is not setup";
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.pixelCode(), std::nullopt);

    g_adapter.attributesFailure = nullptr;
    ASSERT_TRUE(reader.next());
    EXPECT_EQ(reader.pixelCode(), AIK_PIXEL_MONO8);
    EXPECT_EQ(g_adapter.fetched, 2);
}

}   // namespace
}   // namespace orvo::aikctl

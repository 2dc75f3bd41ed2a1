#include <numeric>

#include <gtest/gtest.h>

#include "aik/aik.h"
#include "aikctl/pictures/Picture.h"
#include "aikctl/pictures/PixelFormat.h"
#include "tests/aikctl/decodePng.h"

namespace orvo::aikctl {
namespace {

using Bytes = std::vector<uint8_t>;

// Two pixels side by side, and what a person should see of them.
struct Sample {
    int32_t code;
    bool isPlanar;
    Bytes image;
    Picture seen;
};

const Sample kSamples[] = {
    {AIK_PIXEL_MONO8, false, {10, 20}, {2, 1, 1, {10, 20}}},
    {AIK_PIXEL_MONO16, false, {1, 10, 2, 20}, {2, 1, 1, {10, 20}}},
    {AIK_PIXEL_BGR8, false, {3, 2, 1, 6, 5, 4}, {2, 1, 3, {1, 2, 3, 4, 5, 6}}},
    {AIK_PIXEL_BGRX8, false, {3, 2, 1, 255, 6, 5, 4, 255}, {2, 1, 3, {1, 2, 3, 4, 5, 6}}},
    {AIK_PIXEL_BGR16, false, {0, 3, 0, 2, 0, 1, 9, 6, 9, 5, 9, 4}, {2, 1, 3, {1, 2, 3, 4, 5, 6}}},
    {AIK_PIXEL_PLANAR, true, {1, 4, 2, 5, 3, 6}, {2, 1, 3, {1, 2, 3, 4, 5, 6}}},
    {AIK_PIXEL_PLANAR,
     true,
     {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
     {4, 3, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}}},
};

TEST(PixelFormat, ShowsWhatTheBytesMean)
{
    for (const Sample& sample : kSamples) {
        const auto* format = findPixelFormat(sample.code, sample.image.size() / 2, sample.isPlanar);
        ASSERT_NE(format, nullptr) << sample.code;
        EXPECT_EQ(format->toPicture(sample.image, 2, 1), sample.seen) << format->name;
        EXPECT_EQ(decodePng(encodePng(sample.seen)), sample.seen) << format->name;
    }
}

TEST(PixelFormat, KnowsWhatIsNoPicture)
{
    EXPECT_EQ(findPixelFormat(AIK_PIXEL_OTHER, 5, false), nullptr);
    EXPECT_EQ(findPixelFormat(AIK_PIXEL_OTHER, 1, false), nullptr);
    EXPECT_EQ(findPixelFormat(std::nullopt, 1, false), nullptr);
    EXPECT_EQ(findPixelFormat(AIK_PIXEL_BGR8, 4, false), nullptr);   // the code of another size
    // Split by threes, though not made of three.
    EXPECT_EQ(findPixelFormat(AIK_PIXEL_MONO8, 1, true), nullptr);
    EXPECT_EQ(findPixelFormat(AIK_PIXEL_MONO16, 2, true), nullptr);
    EXPECT_EQ(findPixelFormat(AIK_PIXEL_BGRX8, 4, true), nullptr);

    EXPECT_EQ(describePixelFormat(AIK_PIXEL_OTHER, 5, false), "5 bytes a pixel (code -1)");
    EXPECT_EQ(describePixelFormat(AIK_PIXEL_MONO8, 1, true), "1 byte a pixel, split by threes (code 0)");
    EXPECT_EQ(describePixelFormat(AIK_PIXEL_MONO8, 1, false), "grey, 8 bits (code 0)");
}

TEST(PixelFormat, RefusesPicturesThatNoPngHolds)
{
    EXPECT_THROW(encodePng({0, 0, 1, {}}), std::runtime_error);
    EXPECT_THROW(encodePng({65'536, 65'536, 3, {1}}), std::runtime_error);
}

}   // namespace
}   // namespace orvo::aikctl

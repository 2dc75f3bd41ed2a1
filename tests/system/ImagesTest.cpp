#include <numeric>

#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using Bytes = std::vector<unsigned char>;

struct Format {
    int number;
    size_t bytesPerPixel;
    int32_t packedCode;
    int32_t planarCode;

    friend std::ostream& operator<<(std::ostream& stream, const Format& format)
    {
        return stream << format.number;
    }
};

class SixFormats : public SystemTest, public testing::WithParamInterface<Format> {
protected:
    static constexpr uint32_t kWidth = 5;
    static constexpr uint32_t kHeight = 3;

    size_t imageSize() const { return size_t{kWidth} * kHeight * GetParam().bytesPerPixel; }

    /// Opens the channel and fetches the first picture of a run into memory for the largest format.
    Bytes firstPicture(const char* transformation)
    {
        const int64_t id = host.opened(0);
        EXPECT_EQ(host.write(id, "Transformation", transformation), done());
        EXPECT_EQ(host.setup(id, kWidth, kHeight), done());
        EXPECT_EQ(host.start(id), done());
        deliver(1);
        EXPECT_EQ(host.attributes(id), image());
        Canaries memory(size_t{kWidth} * kHeight * AIK_MAX_BYTES_PER_PIXEL);
        EXPECT_EQ(host.getImage(id, memory.data()), image());
        EXPECT_TRUE(memory.isUntouchedFrom(imageSize()));
        EXPECT_EQ(host.release(id), done());
        return memory.bytes(imageSize());
    }
};

Bytes planesOf(const Bytes& packed)
{
    Bytes planes;
    for (const size_t sample : {size_t{2}, size_t{1}, size_t{0}})
        for (size_t i = sample; i < packed.size(); i += 3)
            planes.push_back(packed[i]);
    return planes;
}

TEST_P(SixFormats, ArriveAsTheBoardFilledThemAndNoByteMore)
{
    machine.oneBoard(Machine::process({Machine::dma(0, GetParam().number)}));

    const Bytes packed = firstPicture("NoTransformation");
    EXPECT_EQ(host.attributes().pixelFormat, GetParam().packedCode);
    EXPECT_GT(std::accumulate(packed.begin(), packed.end(), 0u), 0u);   // there is a picture in it

    const Bytes planar = firstPicture("RGB8PackedToPlanar");
    EXPECT_EQ(host.attributes().pixelFormat, GetParam().planarCode);
    EXPECT_EQ(planar, planesOf(packed));
}

INSTANTIATE_TEST_SUITE_P(, SixFormats,
                         testing::Values(Format{1, 2, 9, 9}, Format{2, 3, 7, 2}, Format{3, 1, 0, 0},
                                         Format{4, 4, 1, 1}, Format{5, 5, -1, -1}, Format{6, 6, 11, 2}),
                         [](const auto& format) { return "Format" + std::to_string(format.param.number); });

using Images = OneChannel;

TEST_F(Images, ArrivePixelByPixelAndChangeTheirCodeWithTheTransformation)
{
    // Two pixels: red 1, green 2, blue 3, and 4, 5, 6.
    machine.file("pictures/one.ppm", std::string("P6\n2 1\n255\n") + "\1\2\3\4\5\6");
    json dma = Machine::dma(0, 2, 2, 1);
    dma["source"] = {{"folder", "pictures"}, {"fit", "crop"}};
    machine.oneBoard(Machine::process({dma}));
    ASSERT_EQ(host.release(id), done());
    id = host.opened(0);
    ASSERT_EQ(host.setup(id, 2, 1), done());
    ASSERT_EQ(host.start(id), done());
    deliver(2);
    EXPECT_EQ(host.fetch(id, 6), "\3\2\1\6\5\4");
    ASSERT_EQ(host.stop(id), done());
    ASSERT_EQ(host.attributes(id), image());
    EXPECT_EQ(host.attributes().pixelFormat, AIK_PIXEL_BGR8);
    ASSERT_EQ(host.write(id, "Transformation", "RGB8PackedToPlanar"), done());
    ASSERT_EQ(host.attributes(id), image());
    EXPECT_EQ(host.attributes().pixelFormat, AIK_PIXEL_PLANAR);   // of the very same picture
    EXPECT_EQ(host.fetch(id, 6), "\1\4\2\5\3\6");
}

TEST_F(Images, WithoutPixelsAreFetchedWithoutAByte)
{
    ASSERT_EQ(host.setup(id, 0, kHeight), done());
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    Canaries memory(8);
    EXPECT_EQ(host.getImage(id, memory.data()), image());
    EXPECT_TRUE(memory.isUntouchedFrom(0));
}

}   // namespace

}   // namespace orvo::test

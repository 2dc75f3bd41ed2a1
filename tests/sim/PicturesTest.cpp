#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <stb/stb_image_write.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using Bytes = std::vector<uint8_t>;

std::string appletOf(const std::string& members)
{
    return R"({"processes": [{"dmas": [{)" + members + "}]}]}";
}

/// Pictures delivered by hand.
class Pictures : public SimulatedBoards {
protected:
    Pictures() { OrvoSim_setManual(1); }

    /// The bytes of the first `count` pictures of an applet with one DMA.
    std::vector<Bytes> pictures(const std::string& members, size_t count, size_t size)
    {
        void* const board = open(0, appletOf(members));
        EXPECT_TRUE(board) << lastError();
        const Ring ring(board, 0, count, size);
        ring.start();
        OrvoSim_deliver(0, 0, static_cast<uint32_t>(count));
        ring.stop();
        std::vector<Bytes> all(count);
        for (size_t i = 0; i < count; ++i)
            for (size_t at = 0; at < size; ++at)
                all[i].push_back(ring.byte(i, at));
        brd.Brd_FreeGrabber(board);
        return all;
    }
};

TEST_F(Pictures, ShowTheMovingPatternInEveryFormat)
{
    constexpr size_t kWidth = 300, kHeight = 12;
    const auto byte = [](unsigned value) { return static_cast<uint8_t>(value); };
    const struct {
        int format;
        std::function<Bytes(uint8_t)> pixel;
    } cases[] = {
        {1,
         [&](uint8_t v) {
             return Bytes{v, v};
         }},   // v * 257
        {2,
         [&](uint8_t v) {
             return Bytes{v, byte(255 - v), byte(v ^ 128)};
         }},
        {3, [&](uint8_t v) { return Bytes{v}; }},
        {4,
         [&](uint8_t v) {
             return Bytes{v, byte(255 - v), byte(v ^ 128), 255};
         }},
        {5, [&](uint8_t v) { return Bytes(5, v); }},
        {6,
         [&](uint8_t v) { return Bytes{v, v, byte(255 - v), byte(255 - v), byte(v ^ 128), byte(v ^ 128)}; }},
    };
    for (const auto& [format, pixel] : cases) {
        const size_t bytes = pixel(0).size();
        const auto shown = pictures(R"("width": 300, "height": 12, "format": )" + std::to_string(format), 2,
                                    kWidth * kHeight * bytes);
        for (const size_t n : {size_t{1}, size_t{2}})
            for (size_t y = 0; y < kHeight; ++y)
                for (size_t x = 40; x < kWidth; ++x) {   // the number stands to the left
                    const auto start = shown[n - 1].begin() + static_cast<int64_t>((y * kWidth + x) * bytes);
                    const Bytes actual(start, start + static_cast<int64_t>(bytes));
                    ASSERT_EQ(pixel(byte(static_cast<unsigned>(x + y + n))), actual)
                        << "format " << format << " picture " << n << " at " << x << ", " << y;
                }
    }
}

TEST_F(Pictures, MoveWithTheOffsets)
{
    void* const board = open(0, appletOf(R"("width": 64, "height": 1)"));
    const uint32_t offset = 5;
    brd.Brd_setParameter(board, 300, &offset, 0);
    brd.Brd_setParameter(board, 400, &offset, 0);
    const Ring ring(board, 0, 1, 64);
    ring.start();
    OrvoSim_deliver(0, 0, 1);
    EXPECT_EQ(63 + 5 + 5 + 1, ring.byte(0, 63));
}

TEST_F(Pictures, BearTheirNumberReadably)
{
    constexpr size_t kWidth = 200, kHeight = 60;   // two pixels a dot
    const auto shown = pictures(R"("width": 200, "height": 60)", 12, kWidth * kHeight);
    const auto drawn = [&](size_t picture, size_t digits) {
        std::string rows;
        for (size_t y = 0; y < 18; y += 2) {
            for (size_t x = 0; x < digits * 12; x += 2)
                rows += shown[picture - 1][y * kWidth + x] == 255 ? '#' : '.';
            rows += '\n';
        }
        return rows;
    };
    EXPECT_EQ("......\n"
              ".#####\n"
              ".....#\n"
              "....#.\n"
              "...#..\n"
              "..#...\n"
              "..#...\n"
              "..#...\n"
              "......\n",
              drawn(7, 1));
    EXPECT_EQ("............\n"
              "...#....###.\n"
              "..##...#...#\n"
              "...#.......#\n"
              "...#......#.\n"
              "...#.....#..\n"
              "...#....#...\n"
              "..###..#####\n"
              "............\n",
              drawn(12, 2));
}

TEST_F(Pictures, MayBeNumbersAlone)
{
    const auto shown = pictures(R"("source": "numbers", "width": 5, "height": 5)", 2, 25);
    Bytes expected(25);
    expected[0] = expected[17] = 2;
    EXPECT_EQ(expected, shown[1]);
    EXPECT_EQ((Bytes{3, 0, 0, 0, 0, 0, 0, 0, 0, 0}),
              pictures(R"("source": "numbers", "width": 10, "height": 1)", 3, 10)[2]);
    EXPECT_EQ(Bytes(7), pictures(R"("source": "numbers", "width": 7, "height": 1)", 1, 7)[0]);
}

/// A folder with three pictures of 2 x 2 pixels: grey, colour, grey with 16 bits.
class PlayedFolder : public Pictures {
protected:
    PlayedFolder()
    {
        folder.write("film/b.PGM", std::string("P5 2 2 255\n") + "\x01\x02\x03\xFF");
        stbi_write_png(folder.path("film/a.png").c_str(), 2, 2, 3, "abcdefghijkl", 6);
        folder.write("film/c.pgm", std::string("P5 2 2 65535\n\x12\x34\x00\x01\xFF\xFF\x80\x00", 21));
        folder.write("film/notes.txt", "no picture");
    }
};

TEST_F(PlayedFolder, GivesItsPicturesByNameAndBeginsAgain)
{
    const auto shown =
        pictures(R"("source": {"folder": "film"}, "width": 2, "height": 2, "format": 3)", 5, 4);
    const Bytes grey{0x01, 0x02, 0x03, 0xFF};
    EXPECT_EQ(grey, shown[1]);
    EXPECT_EQ((Bytes{0x12, 0x00, 0xFF, 0x80}), shown[2]) << "the upper half of 16 bits";
    EXPECT_EQ(shown[0], shown[3]);
    EXPECT_EQ(grey, shown[4]);
}

TEST_F(PlayedFolder, IsPlayedPixelByPixel)
{
    const std::string film = R"("source": {"folder": "film"}, "width": 2, "height": 2, "format": )";
    EXPECT_EQ((Bytes{'c', 'b', 'a', 'f', 'e', 'd', 'i', 'h', 'g', 'l', 'k', 'j'}),
              pictures(film + "2", 1, 12)[0]);
    EXPECT_EQ((Bytes{0x34, 0x12, 0x01, 0x00, 0xFF, 0xFF, 0x00, 0x80}), pictures(film + "1", 3, 8)[2]);
}

TEST_F(PlayedFolder, SettlesSizeAndFormatWhereTheAppletDoesNot)
{
    void* const board = open(0, appletOf(R"("source": {"folder": "film"})"));
    EXPECT_EQ(2u, parameter(board, 100));
    EXPECT_EQ(2u, parameter(board, 200));
    EXPECT_EQ(2u, parameter(board, 700)) << "the first picture has colours";
}

TEST_F(PlayedFolder, IsCutToTheGeometryOrStretchedToIt)
{
    const std::string cut = R"("source": {"folder": "film", "fit": "crop"}, "format": 3, )";
    EXPECT_EQ((Bytes{0x01, 0x02, 0, 0x03, 0xFF, 0, 0, 0, 0}),
              pictures(cut + R"("width": 3, "height": 3)", 2, 9)[1]);

    folder.write("flat/a.pgm", "P5 2 1 255 dd");
    EXPECT_EQ(Bytes(30, 0x64),
              pictures(R"("source": {"folder": "flat"}, "format": 3, "width": 6, "height": 5)", 1, 30)[0]);

    void* const board = open(0, appletOf(cut + R"("width": 1, "height": 1)"));
    const uint32_t one = 1, far = 9;
    brd.Brd_setParameter(board, 300, &one, 0);
    brd.Brd_setParameter(board, 400, &one, 0);
    const Ring ring(board, 0, 4, 1);
    ring.start();
    OrvoSim_deliver(0, 0, 2);
    EXPECT_EQ(0xFF, ring.byte(1, 0)) << "the lower right pixel";
    ring.stop();
    brd.Brd_setParameter(board, 300, &far, 0);
    ring.start();
    OrvoSim_deliver(0, 0, 2);
    EXPECT_EQ(0, ring.byte(3, 0)) << "beside the picture";
}

}   // namespace

}   // namespace orvo::test

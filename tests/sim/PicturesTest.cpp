#include <array>
#include <cstdint>
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
        Brd_FreeGrabber(board);
        return all;
    }
};

TEST_F(Pictures, ShowTheMovingPatternInEveryFormat)
{
    // Where column, row, offsets and number come to 64.
    const std::vector<Bytes> cases = {{},
                                      {64, 64},
                                      {64, 191, 192},
                                      {64},
                                      {64, 191, 192, 255},
                                      {64, 64, 64, 64, 64},
                                      {64, 64, 191, 191, 192, 192}};
    for (size_t format = 1; format < cases.size(); ++format) {
        const size_t bytes = cases[format].size();
        const auto shown = pictures(R"("width": 80, "height": 3, "format": )" + std::to_string(format), 2,
                                    size_t{80} * 3 * bytes);
        for (const size_t n : {size_t{1}, size_t{2}}) {
            const auto start = shown[n - 1].begin() + static_cast<int64_t>((80 * 2 + 62 - n) * bytes);
            EXPECT_EQ(cases[format], Bytes(start, start + static_cast<int64_t>(bytes))) << format;
        }
    }
    void* const board = open(0, appletOf(R"("width": 64, "height": 1)"));
    const uint32_t offset = 5;
    Brd_setParameter(board, 300, &offset, 0);
    Brd_setParameter(board, 400, &offset, 0);
    const Ring ring(board, 0, 1, 64);
    ring.start();
    OrvoSim_deliver(0, 0, 1);
    EXPECT_EQ(64, ring.byte(0, 64 - 5 - 5 - 1));
}

TEST_F(Pictures, BearTheirNumberReadably)
{
    constexpr size_t kWidth = 200, kHeight = 60;   // two pixels a dot
    const Bytes shown = pictures(R"("width": 200, "height": 60)", 12, kWidth * kHeight)[11];
    std::string rows;
    for (size_t y = 0; y < 18; y += 2) {
        for (size_t x = 0; x < 24; x += 2)
            rows += shown[y * kWidth + x] == 255 ? '#' : '.';
        rows += '\n';
    }
    EXPECT_EQ("............\n"
              "...#....###.\n"
              "..##...#...#\n"
              "...#.......#\n"
              "...#......#.\n"
              "...#.....#..\n"
              "...#....#...\n"
              "..###..#####\n"
              "............\n",
              rows);
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
        machine.file("film/b.PGM", std::string("P5 2 2 255\n") + "\x01\x02\x03\xFF");
        stbi_write_png((machine.folder() / "film" / "a.png").string().c_str(), 2, 2, 3, "abcdefghijkl", 6);
        machine.file("film/c.pgm", std::string("P5 2 2 65535\n\x12\x34\x00\x01\xFF\xFF\x80\x00", 21));
        machine.file("film/notes.txt", "no picture");
    }
};

TEST_F(PlayedFolder, IsPlayedByNameAndPixelByPixelAndBeginsAgain)
{
    const std::string film = R"("source": {"folder": "film"}, "width": 2, "height": 2, "format": )";
    const auto shown = pictures(film + "3", 5, 4);
    const Bytes grey{0x01, 0x02, 0x03, 0xFF};
    EXPECT_EQ(grey, shown[1]);
    EXPECT_EQ((Bytes{0x12, 0x00, 0xFF, 0x80}), shown[2]) << "the upper half of 16 bits";
    EXPECT_EQ(shown[0], shown[3]);
    EXPECT_EQ(grey, shown[4]);
    EXPECT_EQ((Bytes{0x34, 0x12, 0x01, 0x00, 0xFF, 0xFF, 0x00, 0x80}), pictures(film + "1", 3, 8)[2]);

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

    machine.file("flat/a.pgm", "P5 2 1 255 dd");
    EXPECT_EQ(Bytes(30, 0x64),
              pictures(R"("source": {"folder": "flat"}, "format": 3, "width": 6, "height": 5)", 1, 30)[0]);

    void* const board = open(0, appletOf(cut + R"("width": 1, "height": 1)"));
    const uint32_t one = 1, far = 9;
    Brd_setParameter(board, 300, &one, 0);
    Brd_setParameter(board, 400, &one, 0);
    const Ring ring(board, 0, 4, 1);
    ring.start();
    OrvoSim_deliver(0, 0, 2);
    EXPECT_EQ(0xFF, ring.byte(1, 0)) << "the lower right pixel";
    ring.stop();
    Brd_setParameter(board, 300, &far, 0);
    ring.start();
    OrvoSim_deliver(0, 0, 2);
    EXPECT_EQ(0, ring.byte(3, 0)) << "beside the picture";
}

}   // namespace

}   // namespace orvo::test

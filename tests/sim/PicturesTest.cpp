#include <stb/stb_image_write.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

/// Pictures delivered by hand.
class Pictures : public SimulatedBoards {
protected:
    Pictures() { OrvoSim_setManual(1); }

    /// A board with an applet of one DMA.
    void* openDma(const std::string& members)
    {
        void* const board = open(0, R"({"processes": [{"dmas": [{)" + members + "}]}]}");
        EXPECT_TRUE(board) << lastError();
        return board;
    }

    /// The bytes of the first `count` pictures that begin at that offset.
    std::vector<Bytes> pictures(const std::string& dma, size_t count, size_t size, uint32_t offset = 0)
    {
        void* const board = openDma(dma);
        setParameter(board, 300, offset);
        setParameter(board, 400, offset);
        const BoardRing ring(board, 0, count, size);
        ring.start();
        OrvoSim_deliver(0, 0, static_cast<uint32_t>(count));
        Brd_FreeGrabber(board);
        return ring.blocks;
    }
};

TEST_F(Pictures, ShowTheMovingPatternInEveryFormat)
{
    // Where column, row, offsets and number come to 64.
    const std::vector<Bytes> pixels = {{64, 64},
                                       {64, 191, 192},
                                       {64},
                                       {64, 191, 192, 255},
                                       {64, 64, 64, 64, 64},
                                       {64, 64, 191, 191, 192, 192}};
    int format = 0;
    for (const Bytes& pixel : pixels) {
        const std::string dma = R"("width": 80, "height": 3, "format": )" + std::to_string(++format);
        const auto shown = pictures(dma, 2, size_t{80} * 3 * pixel.size(), 5);
        for (const size_t number : {size_t{1}, size_t{2}}) {
            const size_t column = 64 - 5 - (2 + 5) - number;
            const auto* const at = shown[number - 1].data() + (size_t{80} * 2 + column) * pixel.size();
            EXPECT_EQ(pixel, Bytes(at, at + pixel.size())) << format;
        }
    }
}

TEST_F(Pictures, BearTheirNumberReadably)
{
    constexpr size_t kWidth = 200, kHeight = 60;   // two pixels a dot
    const Bytes shown = pictures(R"("width": 200, "height": 60)", 12, kWidth * kHeight)[11];
    std::string rows;
    for (size_t y = 2; y < 16; y += 2, rows += '\n')
        for (size_t x = 4; x < 24; x += 2)
            rows += shown[y * kWidth + x] == 255 ? '#' : '.';
    EXPECT_EQ(rows, ".#....###.\n"
                    "##...#...#\n"
                    ".#.......#\n"
                    ".#......#.\n"
                    ".#.....#..\n"
                    ".#....#...\n"
                    "###..#####\n");
}

TEST_F(Pictures, MayBeNumbersAlone)
{
    const std::string numbers = R"("source": "numbers", )";
    Bytes expected(25);   // one at the front, one at the end
    std::fill_n(expected.begin() + 8, 9, BoardRing::kUntouched);
    expected[0] = expected[17] = 2;
    EXPECT_EQ(expected, pictures(numbers + R"("width": 5, "height": 5)", 2, 25)[1]);
    EXPECT_EQ(Bytes(7, BoardRing::kUntouched), pictures(numbers + R"("width": 7, "height": 1)", 1, 7)[0]);
}

/// A folder with three pictures of 2 x 2 pixels: colour, grey, grey with 16 bits.
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
    EXPECT_EQ((Bytes{0x01, 0x02, 0x03, 0xFF}), shown[4]);
    EXPECT_EQ((Bytes{0x12, 0x00, 0xFF, 0x80}), shown[2]) << "the upper half of 16 bits";
    EXPECT_EQ((Bytes{0x34, 0x12, 0x01, 0x00, 0xFF, 0xFF, 0x00, 0x80}), pictures(film + "1", 3, 8)[2]);

    void* const board = openDma(R"("source": {"folder": "film"})");
    for (const int32_t widthHeightOrFormat : {100, 200, 700})
        EXPECT_EQ(2u, parameter(board, widthHeightOrFormat)) << "as the first picture, which has colours";
}

TEST_F(PlayedFolder, IsCutToTheGeometryOrStretchedToIt)
{
    const std::string cut = R"("source": {"folder": "film", "fit": "crop"}, "format": 3, )";
    EXPECT_EQ((Bytes{0xFF, 0, 0, 0}), pictures(cut + R"("width": 2, "height": 2)", 2, 4, 1)[1])
        << "from the lower right pixel on";

    machine.file("flat/a.pgm", "P5 2 1 255 dd");
    EXPECT_EQ(Bytes(30, 0x64),
              pictures(R"("source": {"folder": "flat"}, "format": 3, "width": 6, "height": 5)", 1, 30)[0]);
}

}   // namespace

}   // namespace orvo::test

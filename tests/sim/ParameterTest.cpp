#include <array>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

constexpr int32_t kLacking = -2070;

/// An open board with two processes, three DMA ports, and limits.
class OpenBoard : public SimulatedBoards {
protected:
    int32_t set(int32_t id, uint32_t value, uint32_t dma = 0)
    {
        return brd.Brd_setParameter(board, id, &value, dma);
    }

    int32_t word(int32_t id, uint32_t process, int32_t& value)
    {
        return brd.Brd_getParameterWithType(board, id, &value, process, 1);
    }

    void* const board = open(0, R"({
        "maxWidth": 1024, "widthStep": 8, "maxXOffset": 64, "offsetStep": 4,
        "processes": [
            {"dmas": [{"id": 5, "width": 320, "height": 200, "format": 6}, {"id": 0}], "cameraPorts": [2, 7, 9]},
            {"dmas": 1}
        ]
    })");
};

TEST_F(OpenBoard, TellsItsProcessesPortsAndCameras)
{
    int32_t value = -1;
    EXPECT_EQ(0, word(3070, 0, value));
    EXPECT_EQ(2, value);
    const struct {
        int32_t id;
        uint32_t process;
        int32_t in, out;
    } cases[] = {{3050, 0, 0, 2}, {3050, 1, 0, 1}, {3060, 0, 0, 3}, {3060, 1, 0, 1},
                 {3080, 0, 0, 5}, {3080, 0, 1, 0}, {3080, 1, 0, 6}, {3090, 0, 2, 9}};
    for (const auto& [id, process, in, out] : cases) {
        value = in;
        EXPECT_EQ(0, brd.Brd_getParameter(board, id, &value, process));
        EXPECT_EQ(out, value) << id << " of process " << process << " at " << in;
    }
    value = 3;
    EXPECT_GT(0, brd.Brd_getParameter(board, 3080, &value, 0));
    EXPECT_EQ(3, value) << "a failed read leaves the word alone";
    EXPECT_GT(0, word(3050, 2, value));
    EXPECT_EQ("The applet has no process 2", lastError(board));
}

TEST_F(OpenBoard, KeepsTheGeometryOfEachDmaWithinItsLimits)
{
    EXPECT_EQ(320u, parameter(board, 100, 5));
    EXPECT_EQ(200u, parameter(board, 200, 5));
    EXPECT_EQ(6u, parameter(board, 700, 5));
    EXPECT_EQ(640u, parameter(board, 100, 0));
    EXPECT_EQ(3u, parameter(board, 700, 0));

    EXPECT_EQ(0, set(100, 1024));
    EXPECT_EQ(0, set(100, 0)) << "what a ring of empty blocks is for";
    EXPECT_EQ(0, set(300, 64));
    EXPECT_GT(0, set(100, 1032));
    EXPECT_GT(0, set(100, 1020));
    EXPECT_EQ("1020 is above 1024 or no multiple of 8", lastError(board));
    EXPECT_GT(0, set(300, 68));
    EXPECT_GT(0, set(300, 2));
    EXPECT_GT(0, set(700, 7));
    EXPECT_GT(0, set(100, 8, 1)) << "there is no DMA 1";
    EXPECT_GT(0, set(3050, 8)) << "counts are read only";
    EXPECT_EQ(0u, parameter(board, 100, 0));
    EXPECT_EQ(64u, parameter(board, 300, 0));
    EXPECT_EQ(320u, parameter(board, 100, 5));
}

TEST_F(OpenBoard, ReadsAndWritesInTheWidthOfTheTypeThatIsAskedFor)
{
    const uint64_t canary = 0xEEEE'EEEE'EEEE'EEEE;
    const struct {
        int32_t type;
        uint64_t expected;
    } cases[] = {{1, 0xEEEE'EEEE'0000'0280}, {2, 0xEEEE'EEEE'0000'0280}, {3, 640}, {4, 640}, {7, 640}};
    for (const auto& [type, expected] : cases) {
        uint64_t value = canary;
        EXPECT_EQ(0, brd.Brd_getParameterWithType(board, 100, &value, 0, type));
        EXPECT_EQ(expected, value) << "type " << type;
    }
    double number = 0;
    EXPECT_EQ(0, brd.Brd_getParameterWithType(board, 100, &number, 0, 5));
    EXPECT_EQ(640.0, number);

    number = 512;
    EXPECT_EQ(0, brd.Brd_setParameterWithType(board, 100, &number, 0, 5));
    EXPECT_EQ(512u, parameter(board, 100));
    for (const double refused : {8.5, -8.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_GT(0, brd.Brd_setParameterWithType(board, 100, &refused, 0, 5)) << refused;
    const int64_t negative = -8;
    EXPECT_GT(0, brd.Brd_setParameterWithType(board, 100, &negative, 0, 3));
    EXPECT_GT(0, brd.Brd_setParameterWithType(board, 100, "640", 0, 6));
    EXPECT_GT(0, brd.Brd_setParameterWithType(board, 100, &negative, 0, 8)) << "there is no type 8";
    EXPECT_EQ(512u, parameter(board, 100));
}

TEST_F(OpenBoard, FindsParametersByNameAndTellsTheirProperties)
{
    EXPECT_EQ(100, brd.Brd_getParameterIdByName(board, "BRD_WIDTH"));
    EXPECT_EQ(kLacking, brd.Brd_getParameterIdByName(board, ""));
    EXPECT_EQ(kLacking, brd.Brd_getParameterIdByName(board, "brd_width"));
    EXPECT_EQ("2", property(board, 100, 1));
    EXPECT_EQ("640", property(board, 100, 0)) << "of the lowest DMA, where none is named";
    EXPECT_EQ("BRD_FORMAT", property(board, 700, 3));
    EXPECT_EQ("0", property(board, 100, 13)) << "no enumeration";
    std::array<char, 8> text{};
    int32_t length = text.size();
    EXPECT_EQ(0, brd.Brd_getParameterPropertyEx(board, 100, 0, 5, text.data(), &length));
    EXPECT_STREQ("320", text.data());
    EXPECT_GT(0, brd.Brd_getParameterProperty(board, 100, 14, text.data(), &length));
    EXPECT_GT(0, brd.Brd_getParameterProperty(board, 100, 99, text.data(), &length));
    EXPECT_EQ(kLacking, brd.Brd_getParameterProperty(board, 12345, 0, text.data(), &length));
}

TEST_F(OpenBoard, HandsOutTheEntriesOfAnEnumeration)
{
    std::vector<char> table(std::stoul(property(board, 700, 13)));
    auto length = static_cast<int32_t>(table.size());
    ASSERT_EQ(0, brd.Brd_getParameterProperty(board, 700, 14, table.data(), &length));
    EXPECT_EQ(table.size(), static_cast<size_t>(length));
    const std::string_view first("\1\0\0\0Grey16\0\2\0\0\0Colour24", 23);
    EXPECT_EQ(first, std::string_view(table.data(), first.size()));
    EXPECT_EQ(std::string_view("\xFF\xFF\xFF\xFF", 4), std::string_view(table.data() + length - 4, 4));
}

TEST_F(OpenBoard, ObeysLengthWords)
{
    std::array<char, 16> text{};
    text.fill('x');
    const auto ask = [&](void* buffer, int32_t& length) {
        return brd.Brd_getParameterProperty(board, 100, 0, buffer, &length);   // "640"
    };
    int32_t length = 4;
    EXPECT_EQ(0, ask(text.data(), length));
    EXPECT_EQ(4, length) << "with the NUL";
    EXPECT_EQ('x', text[4]);

    text.fill('x');
    length = 3;
    EXPECT_GT(0, ask(text.data(), length));
    EXPECT_EQ('x', text[0]);
    length = -1;
    EXPECT_GT(0, ask(text.data(), length));

    for (int32_t whatever : {0, -7, 1000}) {
        EXPECT_EQ(0, ask(nullptr, whatever));
        EXPECT_EQ(4, whatever);
    }
    EXPECT_GT(0, brd.Brd_getParameterProperty(board, 100, 0, text.data(), nullptr));

    uint32_t size = 3;
    EXPECT_GT(0, brd.Brd_getSystemInformation(nullptr, 100, 0, 0, text.data(), &size));
    EXPECT_EQ(0, brd.Brd_getSystemInformation(nullptr, 100, 0, 0, nullptr, &size));
    EXPECT_EQ(10u, size);
    EXPECT_EQ(0, brd.Brd_getSystemInformation(nullptr, 100, 0, 0, text.data(), &size));
    EXPECT_STREQ("125000000", text.data());
}

TEST_F(OpenBoard, RefusesHandlesThatAreNoneOrNoMore)
{
    uint32_t value = 0, size = 0;
    EXPECT_GT(0, brd.Brd_getParameter(nullptr, 100, &value, 0));
    EXPECT_EQ("The board's handle is null", lastError());
    EXPECT_GT(0, brd.Brd_getParameter(&value, 100, &value, 0));
    EXPECT_GT(0, brd.Brd_getParameter(board, 100, nullptr, 0));
    EXPECT_GT(0, brd.Brd_getSystemInformation(nullptr, 1300, 0, 0, nullptr, &size)) << "needs an open board";
    EXPECT_GT(0, brd.Brd_getSystemInformation(nullptr, 4711, 0, 0, nullptr, &size));
    EXPECT_GT(0, brd.Brd_getSystemInformation(nullptr, 1012, 0, 3, nullptr, &size)) << "no board 3";

    EXPECT_FALSE(open(0, "{}")) << "open already";
    EXPECT_EQ("Board 0 is open already", lastError());
    EXPECT_EQ(0, brd.Brd_FreeGrabber(board));
    EXPECT_GT(0, brd.Brd_FreeGrabber(board));
    void* const again = open(0, "{}");
    ASSERT_TRUE(again);
    EXPECT_NE(board, again);
    EXPECT_GT(0, brd.Brd_getParameter(board, 100, &value, 0)) << "the handle of the first opening";
}

TEST_F(SimulatedBoards, AnswerLackingParametersWithTheirOwnNumberAndLeaveTheWord)
{
    void* const board = open(0, R"({"lacks": [3050, 3070, 3080]})");
    for (const int32_t id : {3050, 3070, 3080}) {
        int32_t word = 1;
        EXPECT_EQ(kLacking, brd.Brd_getParameter(board, id, &word, 0));
        EXPECT_EQ(1, word);
    }
    int32_t word = 1;
    EXPECT_EQ(0, brd.Brd_getParameter(board, 3090, &word, 0));
    EXPECT_EQ("The applet has no parameter 3080", lastError(board));
}

}   // namespace

}   // namespace orvo::test

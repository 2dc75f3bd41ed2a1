#include <array>
#include <cstdint>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

/// The parameters that an applet file describes.
class Parameters : public SimulatedBoards {
protected:
    int32_t idOf(void* board, const char* name) { return Brd_getParameterIdByName(board, name); }

    std::string propertyOf(void* board, int32_t id, int32_t code, uint32_t dma)
    {
        std::array<char, 256> text{};
        int32_t length = text.size();
        EXPECT_EQ(0, Brd_getParameterPropertyEx(board, id, code, dma, text.data(), &length));
        return {text.data(), static_cast<size_t>(length) - 1};
    }

    template <typename Value>
    int32_t write(void* board, int32_t id, Value value, int32_t type, uint32_t dma = 0)
    {
        return Brd_setParameterWithType(board, id, &value, dma, type);
    }
};

constexpr const char* kTable = R"({"parameters": [
    {"id": 5001, "name": "A", "type": 1, "value": -7, "least": -10, "most": 100, "text": "about A"},
    {"id": 5002, "name": "B", "type": 2, "value": 4294967295},
    {"id": 5003, "name": "C", "type": 3, "value": -9223372036854775808},
    {"id": 5004, "name": "D", "type": 4, "value": 18446744073709551615},
    {"id": 5005, "name": "E", "type": 5, "value": 0.1, "least": -1.5, "most": 1.5},
    {"id": 5006, "name": "F", "type": 6, "value": "six"},
    {"id": 5007, "name": "G", "type": 7, "least": 7},
    {"id": 5008, "name": "H", "type": 2, "entries": [{"value": 3, "name": "Fast"}, {"value": 70000, "name": "Slow"}]},
    {"id": 5009, "name": "I", "type": 1, "value": 9, "writeable": false}]})";

TEST_F(Parameters, AnswerByNameAndPropertyAsTheFileSays)
{
    void* const board = open(0, kTable);
    const char* const values[] = {
        "-7", "4294967295", "-9223372036854775808", "18446744073709551615", "0.1", "six", "7", "3"};
    int32_t type = 0;
    for (const char* const value : values) {
        const char name[] = {static_cast<char>('A' + type), '\0'};
        const int32_t id = idOf(board, name);
        ++type;
        EXPECT_EQ(5000 + type, id);
        EXPECT_EQ(value, propertyOf(board, id, 0, 1)) << name;
        EXPECT_EQ(std::to_string(type == 8 ? 2 : type), property(board, id, 1)) << name;
    }
    EXPECT_GT(0, idOf(board, "a"));
    EXPECT_EQ("about A", property(board, 5001, 3));
    EXPECT_EQ("B", property(board, 5002, 3));
    EXPECT_EQ("0", property(board, 5001, 13)) << "no enumeration";
    const std::string packed("\3\0\0\0Fast\0\x70\x11\1\0Slow\0\xFF\xFF\xFF\xFF", 22);
    EXPECT_EQ(std::to_string(packed.size()), property(board, 5008, 13));
    EXPECT_EQ(packed, propertyOf(board, 5008, 14, 0) + '\xFF');
}

TEST_F(Parameters, TakeWhatTheirTypeAndRangeAllowForEachDma)
{
    void* const board = open(0, kTable);
    EXPECT_EQ(0, write(board, 5001, int32_t{100}, 1, 1));
    EXPECT_EQ("100", propertyOf(board, 5001, 0, 1));
    EXPECT_EQ("-7", property(board, 5001, 0)) << "of the first DMA";
    EXPECT_EQ(0, write(board, 5007, uint64_t{1} << 63, 4));
    EXPECT_EQ("9223372036854775808", property(board, 5007, 0));
    EXPECT_EQ(0, write(board, 5008, uint32_t{70'000}, 2));
    EXPECT_EQ(0, write(board, 5001, 5.0, 5)) << "a double that is a number of the parameter's type";
    EXPECT_EQ(0, Brd_setParameter(board, 5006, "seven", 0));
    EXPECT_EQ("seven", property(board, 5006, 0));

    const auto isRefused = [&](int32_t status, const char* problem) {
        EXPECT_GT(0, status);
        EXPECT_EQ(status, Brd_getLastErrorNumber(board));
        EXPECT_THAT(lastError(board), HasSubstr(problem));
    };
    isRefused(write(board, 5001, int32_t{101}, 1), "A can't be 101");
    isRefused(write(board, 5001, 2.5, 5), "2.5");
    isRefused(write(board, 5001, int64_t{1}, 3), "A is of the type 1 and can't be written as one of 3");
    isRefused(write(board, 5006, int32_t{1}, 1), "F is of the type 6");
    isRefused(write(board, 5006, 1.0, 5), "F is of the type 6");
    isRefused(write(board, 5005, int64_t{1}, 3), "E is of the type 5");
    isRefused(write(board, 5005, 1.6, 5), "E can't be 1.6");
    isRefused(write(board, 5008, uint32_t{4}, 2), "H can't be 4");
    isRefused(write(board, 5009, int32_t{9}, 1), "I can't be written");
    isRefused(write(board, 5001, int32_t{1}, 8), "There is no data type 8");
    isRefused(write(board, 5001, int32_t{1}, 1, 7), "The applet has no DMA 7");
    EXPECT_EQ("5", property(board, 5001, 0));
}

TEST_F(Parameters, ThatAreWrongFailTheAppletWithWhatAndWhere)
{
    const struct {
        const char* members;
        const char* problem;
    } cases[] = {
        {R"("name": "X", "type": 1)", "id: is missing"},
        {R"("id": 1, "name": "X")", "type: is missing"},
        {R"("id": 1, "name": "X", "type": 8)", "type: must be a whole number from 1 to 7"},
        {R"("id": 9, "name": "X", "type": 1)", "id: must differ from that of every other parameter"},
        {R"("id": 700, "name": "X", "type": 1)", "id: must differ"},
        {R"("id": 1, "name": "BRD_WIDTH", "type": 1)", "name: must differ"},
        {R"("id": 1, "name": "X", "type": 2, "value": -1)",
         "value: must be a whole number from 0 to 4294967295"},
        {R"("id": 1, "name": "X", "type": 6, "value": 1)", "value: must be a text"},
        {R"("id": 1, "name": "X", "type": 6, "most": 1)", "most: must not be there"},
        {R"("id": 1, "name": "X", "type": 5, "value": 3, "most": 2)", "value: must be within"},
        {R"("id": 1, "name": "X", "type": 1, "least": 3, "most": 2)", "most: must not be below \"least\""},
        {R"("id": 1, "name": "X", "type": 5, "entries": [])", "entries: must not be there"},
        {R"("id": 1, "name": "X", "type": 1, "entries": [])", "entries: must have an entry"},
        {R"("id": 1, "name": "X", "type": 1, "entries": [{"value": -1, "name": "a"}])",
         "entries[0].value: must not be -1"},
        {R"("id": 1, "name": "X", "type": 1, "entries": [{"value": 1, "name": "a"}, {"value": 2, "name": "a"}])",
         "entries[1].name: must differ"},
        {R"("id": 1, "name": "X", "type": 1, "value": 2, "entries": [{"value": 1, "name": "a"}])",
         "value: must be the value of an entry"},
        {R"("id": 1, "name": "X", "type": 1, "writable": true)", "writable: is not known here"},
    };
    for (const auto& [members, problem] : cases) {
        EXPECT_FALSE(open(0, R"({"parameters": [{"id": 9, "name": "N", "type": 1}, {)" +
                                 std::string(members) + "}]}"));
        EXPECT_THAT(lastError(), StartsWith(folder.path("applet0.hap") + ": parameters[1].")) << members;
        EXPECT_THAT(lastError(), HasSubstr(problem)) << members;
    }
}

}   // namespace

}   // namespace orvo::test

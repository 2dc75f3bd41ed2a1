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
    template <typename Value>
    int32_t write(void* board, int32_t id, Value value, int32_t type, uint32_t dma = 0)
    {
        return Brd_setParameterWithType(board, id, &value, dma, type);
    }
};

TEST_F(Parameters, RefuseWhatTheirTypeRangeOrAccessForbidsAndSayWhy)
{
    void* const board = open(0, R"({"parameters": [
        {"id": 5001, "name": "A", "type": 1, "value": -7, "least": -10, "most": 100},
        {"id": 5003, "name": "C", "type": 3, "value": -9223372036854775808},
        {"id": 5005, "name": "E", "type": 5, "value": 0.1, "least": -1.5, "most": 1.5},
        {"id": 5006, "name": "F", "type": 6, "value": "six"},
        {"id": 5007, "name": "G", "type": 7, "least": 7},
        {"id": 5008, "name": "H", "type": 2, "entries": [{"value": 3, "name": "Fast"}]},
        {"id": 5009, "name": "I", "type": 1, "value": 9, "writeable": false}]})");
    EXPECT_EQ("-9223372036854775808", property(board, 5003, 0));
    EXPECT_EQ("7", property(board, 5007, 0)) << "what is nearest to 0";
    EXPECT_EQ(0, write(board, 5007, uint64_t{1} << 63, 4));
    EXPECT_EQ("9223372036854775808", property(board, 5007, 0));

    const auto isRefused = [&](int32_t status, const char* problem) {
        EXPECT_GT(0, status);
        EXPECT_EQ(status, Brd_getLastErrorNumber(board));
        EXPECT_THAT(lastError(board), HasSubstr(problem));
    };
    isRefused(write(board, 5001, int32_t{-11}, 1), "A can't be -11");
    isRefused(write(board, 5001, int64_t{1}, 3), "A is of the type 1 and can't be written as one of 3");
    isRefused(write(board, 5006, int32_t{1}, 1), "F is of the type 6");
    isRefused(write(board, 5005, 1.6, 5), "E can't be 1.6");
    isRefused(write(board, 5008, uint32_t{4}, 2), "H can't be 4");
    isRefused(write(board, 5009, int32_t{9}, 1), "I can't be written");
    isRefused(write(board, 5001, int32_t{1}, 8), "There is no data type 8");
    isRefused(write(board, 5001, int32_t{1}, 1, 7), "The applet has no DMA 7");
    EXPECT_EQ("-7", property(board, 5001, 0));
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
        EXPECT_THAT(lastError(), StartsWith((machine.folder() / "applet0.hap").string() + ": parameters[1]."))
            << members;
        EXPECT_THAT(lastError(), HasSubstr(problem)) << members;
    }
}

}   // namespace

}   // namespace orvo::test

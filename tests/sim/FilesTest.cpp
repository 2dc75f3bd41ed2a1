#include <array>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "os/Program.h"
#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::StartsWith;

class Files : public SimulatedBoards {
protected:
    std::string pathOf(const char* name) const { return (machine.folder() / name).string(); }
};

std::vector<int32_t> boardTypes()
{
    std::vector<int32_t> types;
    for (int32_t i = -1; i < 9; ++i)
        types.push_back(Brd_getBoardType(i));
    return types;
}

TEST_F(Files, SayWhichBoardsThereAreForEachLifeAnew)
{
    describeBoards(R"({"boards": [
        {"index": 7, "type": 3652, "serial": "A-1"},   // comments are allowed
        {"index": 2, "type": 99999}
    ]})");
    beginLife();
    Brd_InitLibraries(nullptr);
    describeBoards(R"({"boards": []})");
    Brd_FreeLibraries();
    EXPECT_EQ((std::vector<int32_t>{-1, -1, -1, 99999, -1, -1, -1, -1, 3652, -1}), boardTypes());
    EXPECT_STREQ("Board type 99999", Brd_getBoardNameByType(99999, 1));
    std::array<char, 255> text{};
    uint32_t length = text.size();
    EXPECT_EQ(0, Brd_getSystemInformation(nullptr, 1012, 0, 7, text.data(), &length));
    const std::string name = Brd_getBoardNameByType(3652, 1);
    EXPECT_EQ(name + ", serial number A-1, simulated", text.data());

    endLife();
    beginLife();
    EXPECT_EQ(std::vector<int32_t>(10, -1), boardTypes());
}

TEST_F(Files, OfBoardsThatAreWrongLetEveryBoardFailWithWhatAndWhere)
{
    const struct {
        const char* content;
        const char* problem;
    } cases[] = {
        {"{\"boards\": [\n  {\"index\" 1}]}", "line 2, column 12"},
        {"[]", "the whole: must be an object in braces, but is []"},
        {"{}", "boards: is missing"},
        {R"({"boards": {}})", "boards: must be a list in brackets"},
        {R"({"boards": [{"index": 8, "type": 1}]})",
         "boards[0].index: must be a whole number from 0 to 7, but is 8"},
        {R"({"boards": [{"index": 1, "type": "x"}]})", "boards[0].type: must be a whole number"},
        {R"({"boards": [{"index": 1, "type": 1}, {"index": 1, "type": 2}]})", "boards[1].index: must differ"},
        {R"({"boards": [{"index": 1, "type": 1, "typo": 2}]})",
         "boards[0].typo: is not known here; known are index, type, serial, cameras, faults"},
        {R"({"boards": [], "boards": []})", "the key \"boards\" stands twice"},
        {R"({"boards": [{"index": 1, "type": 1, "faults": {"dropEvery": -1}}]})",
         "boards[0].faults.dropEvery: must be"},
        {R"({"boards": [], "script": [{"call": "Brd_AddMem"}]})", "script[0]: must have either"},
        {R"({"boards": [{"index": 1, "type": 2897, "cameras": [{"port": 1}, {"port": 1}]}]})",
         "boards[0].cameras[1].port: another camera stands behind port 1"},
        {R"({"boards": [{"index": 1, "type": 2897, "cameras": [{"port": 1, "parameters": {"Weight": 1}}]}]})",
         "boards[0].cameras[0].parameters.Weight: a camera has no parameter of that name"},
        {R"({"boards": [{"index": 1, "type": 2897, "cameras": [{"port": 1, "parameters": {"Gain": 99}}]}]})",
         "range"},
        {R"({"boards": [{"index": 1, "type": 2897, "cameras": [{"port": 1, "parameters": {"Width": "wide"}}]}]})",
         "whole number"},
    };
    for (const auto& [content, problem] : cases) {
        describeBoards(content);
        EXPECT_FALSE(open(0, "{}"));
        EXPECT_EQ(2897, Brd_getBoardType(0)) << "the built-in boards stand in";
        EXPECT_THAT(lastError(), HasSubstr(problem));
        EXPECT_THAT(lastError(), StartsWith(pathOf("boards.json")));
        EXPECT_FALSE(Brd_InitConfigEx("unused", 1, 0));
        EXPECT_THAT(lastError(), HasSubstr(problem)) << "and so for each of them";
        EXPECT_GT(0, Brd_getLastErrorNumber(nullptr));
        endLife();
    }
    os::setEnvironmentVariable("ORVO_SIM_BOARDS", machine.folder().string());
    EXPECT_FALSE(open(0, "{}"));
    EXPECT_THAT(lastError(), EndsWith("cannot be read"));
}

TEST_F(Files, OfAppletsThatAreWrongFailWithWhatAndWhereAndCanBeTriedAgain)
{
    const struct {
        const char* content;
        const char* problem;
    } cases[] = {
        {"{", "line 1, column 2"},
        {R"({"processes": [{}]})", "processes[0].dmas: is missing"},
        {R"({"processes": [{"dmas": [{"id": 1}, {"id": 1}]}]})",
         "processes[0].dmas[1]: another DMA port of the applet has the id 1"},
        {R"({"processes": [{"dmas": [{"width": 30, "widthStep": 8}]}]})",
         "processes[0].dmas[0].width: 30 is above 65536 or no multiple of 8"},
        {R"({"processes": [{"dmas": 2, "cameraPorts": [{"port": 2, "dma": 2}]}]})",
         "processes[0].cameraPorts[0].dma: must be a whole number from 0 to 1"},
        {R"({"processes": [{"dmas": 2, "cameraPorts": [{"port": 2, "dma": 1}, 3]}]})",
         "processes[0].cameraPorts[1]: another camera port feeds the DMA port at position 1"},
        {R"({"format": 7})", "format: must be a whole number from 1 to 6, but is 7"},
        {R"({"picturesPerSecond": -1})", "picturesPerSecond: must be a number from 0"},
        {R"({"source": "numbres"})", "source: must be \"pattern\""},
        {R"({"source": {"folder": "nowhere"}})", "is no folder that can be read"},
        {R"({"source": {"folder": "."}})", "holds no PNG, JPEG, PGM or PPM picture"},
        {R"({"source": {"folder": "broken"}})", "is no PNG, JPEG, PGM or PPM picture"},
        {R"({"source": {"folder": "broken", "fit": "squeeze"}})", "source.fit: must be"},
    };
    machine.file("broken/a.png", "not a picture");
    for (const auto& [content, problem] : cases) {
        EXPECT_FALSE(open(0, content));
        EXPECT_THAT(lastError(), HasSubstr(problem));
        EXPECT_THAT(lastError(), StartsWith(pathOf("applet0.hap")));
    }
    EXPECT_TRUE(open(0, "{}"));
    EXPECT_FALSE(Brd_InitEx(nullptr, 1, 0));
    EXPECT_FALSE(Brd_InitEx(pathOf("none").c_str(), 1, 0));
    EXPECT_THAT(lastError(), EndsWith("none: cannot be read"));
    EXPECT_FALSE(open(5, "{}"));
    EXPECT_EQ("There is no board of index 5", lastError());
}

}   // namespace

}   // namespace orvo::test

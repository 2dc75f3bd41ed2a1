#include <array>
#include <bit>
#include <chrono>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>

#include "os/PathText.h"
#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

struct Refusal {
    std::string file, content, problem;
};

/// The rows of refusals.txt, which says how it is to be read.
std::vector<Refusal> refusals()
{
    std::vector<Refusal> rows;
    std::ifstream lines("refusals.txt");
    std::string file, frame, content;
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("== ")) {
            const size_t split = line.find(": ");
            file = line.substr(3, split - 3);
            frame = line.substr(split + 2);
        } else if (line.starts_with("    ")) {
            std::string whole = frame;
            whole.replace(frame.find('$'), 1, content);
            rows.push_back({file, whole, line.substr(4)});
        } else {
            content = line;
        }
    }
    return rows;
}

using Refusals = SimulatedBoards;

TEST_F(Refusals, SayWhatIsWrongAndWhereEachTime)
{
    machine.file("broken/a.png", "not a picture");
    EXPECT_LT(40u, refusals().size());
    for (const auto& [file, content, problem] : refusals()) {
        SCOPED_TRACE(content);
        describeBoard(R"("serial": "S")");
        const std::string applet = machine.file("applet.hap", "{}");
        const std::string wrong = machine.file(file, content);
        beginSession();
        for (const auto openBoard : {Brd_InitEx, Brd_InitConfigEx}) {
            EXPECT_FALSE(openBoard(applet.c_str(), 0, 0));
            EXPECT_THAT(lastError(), testing::AllOf(testing::StartsWith(wrong), testing::HasSubstr(problem)));
            EXPECT_GT(0, Brd_getLastErrorNumber(nullptr));
        }
        EXPECT_EQ(2897, Brd_getBoardType(0)) << "the built-in boards take the place of wrong ones";
        endSession();
    }
}

TEST_F(Refusals, OfAProgramsRuleAreSaidThoughMessagesAreOff)
{
    testing::internal::CaptureStderr();
    OrvoSim_hold("Brd_AddMen", 1, ORVO_SIM_AT_ENTRY);
    OrvoSim_answer("Eth_scanPorts library=0", 1, -5);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                testing::AllOf(
                    testing::StartsWith("orvo_sim: script: no library exports \"Brd_AddMen\"; nearest are "),
                    testing::Not(testing::HasSubstr("Eth_scanPorts"))));
}

TEST_F(SimulatedBoards, AreReadAnewForEachSession)
{
    describe(R"({"boards": [{"index": 7, "type": 3652}],   // comments are allowed
        "script": [{"call": "Brd_AddMem", "nth": 0, "answer": -5},
                   {"call": "Brd_getBoardType", "slowMilliseconds": 30}]})");
    beginSession();
    const auto before = std::chrono::steady_clock::now();
    describe(R"({"boards": []})");
    EXPECT_EQ(3652, Brd_getBoardType(7));
    EXPECT_LE(before + std::chrono::milliseconds(30), std::chrono::steady_clock::now());
    EXPECT_EQ(-5, Brd_AddMem(nullptr, nullptr, 0, 0, nullptr));
    endSession();
    beginSession();
    EXPECT_EQ(-1, Brd_getBoardType(7));
    EXPECT_NE(-5, Brd_AddMem(nullptr, nullptr, 0, 0, nullptr)) << "the rules went with the file";
    endSession();
    useBoardsFile(machine.folder().string());
    EXPECT_FALSE(open(0));
    EXPECT_THAT(lastError(), testing::EndsWith("cannot be read"));
}

TEST_F(SimulatedBoards, TakePathsInTheCodePageOfTheProcessAndInUtf8FromFiles)
{
    const std::filesystem::path folder = machine.folder() / u8"Prüf";
    const std::filesystem::path film = folder / u8"Größe";
    std::filesystem::create_directories(film);
    std::ofstream(film / u8"ä.pgm") << "P5 2 1 255 dd";
    std::ofstream(folder / "boards.json") << R"({"boards": [{"index": 0, "type": 2897}],
        "ledger": "Größe/ledger.json", "journal": "Größe/journal.txt"})";
    std::ofstream(folder / "applet.hap") << R"({"source": {"folder": "Größe"}, "file": "Größe/a"})";
    useBoardsFile(os::textOf(folder / "boards.json"));
    beginSession();
    void* const board = Brd_InitEx(os::textOf(folder / "applet.hap").c_str(), 0, 0);
    ASSERT_TRUE(board) << lastError();
    EXPECT_EQ(2u, parameter(board, 100)) << "as wide as the picture of the folder";
    std::array<char, 1024> file{};
    uint32_t length = file.size();
    EXPECT_EQ(0, Brd_getSystemInformation(board, 1300, 0, 0, file.data(), &length));
    EXPECT_EQ(os::textOf(folder / u8"Größe/a"), file.data());
    endSession();
    EXPECT_TRUE(std::filesystem::exists(film / "ledger.json"));
    EXPECT_TRUE(std::filesystem::exists(film / "journal.txt"));
}

}   // namespace

}   // namespace orvo::test

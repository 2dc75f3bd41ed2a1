#include "tests/support/Machine.h"

#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "os/Os.h"
#include "os/Program.h"
#include "sim/orvo_sim.h"

namespace orvo::test {

namespace {

constexpr int kMostBoards = 8;

std::string variableOf(int board)
{
    return "ORVO_COGNEX_APPLET_" + std::to_string(board);
}

std::filesystem::path newFolder()
{
    const auto all = std::filesystem::temp_directory_path();
    for (unsigned number = os::currentThreadId();; ++number) {
        auto folder = all / ("orvo-" + std::to_string(number));
        if (std::filesystem::create_directory(folder))
            return folder;
    }
}

}   // namespace

Machine::Machine() : m_folder(newFolder())
{
    OrvoSim_reset();
    OrvoSim_setManual(1);
    OrvoSim_setMessages(0);
    os::setEnvironmentVariable("ORVO_SIM_BOARDS", "");
    for (int board = 0; board < kMostBoards; ++board)
        appletVariable(board, "");
}

Machine::~Machine()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_folder, ignored);
}

void Machine::boards(const std::vector<json>& entries)
{
    os::setEnvironmentVariable("ORVO_SIM_BOARDS", file("boards.json", json{{"boards", entries}}.dump()));
}

void Machine::applet(int board, const json& applet, const std::string& fileName)
{
    appletVariable(board, file("board" + std::to_string(board) + "-" + fileName, applet.dump()));
}

void Machine::appletVariable(int board, const std::string& value)
{
    os::setEnvironmentVariable(variableOf(board), value);
}

std::string Machine::file(const std::string& name, const std::string& content)
{
    const auto path = m_folder / name;
    std::filesystem::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << content;
    return path.string();
}

void Machine::oneBoard(const json& process)
{
    boards({grabber(0)});
    applet(0, appletOf({process}));
}

json Machine::appletOf(const std::vector<json>& processes)
{
    return {{"processes", processes}};
}

json Machine::process(const std::vector<json>& dmas)
{
    return {{"dmas", dmas}};
}

json Machine::dma(int id, int format, int width, int height)
{
    return {{"id", id}, {"format", format}, {"width", width}, {"height", height}};
}

json Machine::grabber(int index, int type)
{
    return {{"index", index}, {"type", type}};
}

Lines journal(const std::string& filter, uint64_t from)
{
    std::string text(OrvoSim_readJournal(filter.c_str(), from, nullptr, 0), '\0');
    OrvoSim_readJournal(filter.c_str(), from, text.data(), text.size());
    std::istringstream stream(text.substr(0, text.find('\0')));
    Lines lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

Lines takeJournal(const std::string& filter)
{
    Lines lines = journal(filter);
    OrvoSim_clearJournal();
    return lines;
}

void deliver(uint32_t count, uint32_t dma, uint32_t board)
{
    EXPECT_EQ(OrvoSim_deliver(board, dma, count), static_cast<int32_t>(count));
}

}   // namespace orvo::test

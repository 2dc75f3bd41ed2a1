#include "tests/sim/SimulatedBoards.h"

#include <array>

#include "os/Program.h"

namespace orvo::test {

SimulatedBoards::SimulatedBoards()
{
    OrvoSim_setManual(0);
    describeBoards(R"({"boards": [{"index": 0, "type": 2897}, {"index": 1, "type": 1872}]})");
}

SimulatedBoards::~SimulatedBoards()
{
    OrvoSim_clearScript();
    endLife();
    OrvoSim_reset();
}

void SimulatedBoards::describeBoards(std::string_view text)
{
    os::setEnvironmentVariable("ORVO_SIM_BOARDS", machine.file("boards.json", std::string(text)));
}

void SimulatedBoards::describeNothing()
{
    os::setEnvironmentVariable("ORVO_SIM_BOARDS", "");
}

void SimulatedBoards::beginLife()
{
    Brd_InitLibraries(nullptr);
    m_inLife = true;
}

void SimulatedBoards::endLife()
{
    if (m_inLife)
        Brd_FreeLibraries();
    m_inLife = false;
}

void* SimulatedBoards::open(uint32_t boardIndex, std::string_view appletJson)
{
    if (!m_inLife)
        beginLife();
    const std::string name = "applet" + std::to_string(boardIndex) + ".hap";
    const std::string path = machine.file(name, std::string(appletJson));
    return Brd_InitEx(path.c_str(), boardIndex, 0);
}

std::string SimulatedBoards::lastError(void* board) const
{
    return Brd_getLastErrorDescription(board);
}

uint32_t SimulatedBoards::parameter(void* board, int32_t id, uint32_t dma) const
{
    uint32_t value = 0;
    EXPECT_EQ(0, Brd_getParameter(board, id, &value, dma)) << lastError(board);
    return value;
}

std::string SimulatedBoards::property(void* board, int32_t id, int32_t code) const
{
    std::array<char, 256> text{};
    int32_t length = text.size();
    EXPECT_EQ(0, Brd_getParameterProperty(board, id, code, text.data(), &length)) << lastError(board);
    return text.data();
}

OrvoSim_Ledger SimulatedBoards::ledger(uint32_t boardIndex, uint32_t dma)
{
    OrvoSim_Ledger numbers{};
    OrvoSim_readLedger(boardIndex, dma, &numbers);
    return numbers;
}

}   // namespace orvo::test

#include "tests/support/SimControl.h"

#include <sstream>

#include <gtest/gtest.h>

#include "sim/orvo_sim.h"

namespace orvo::test {

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

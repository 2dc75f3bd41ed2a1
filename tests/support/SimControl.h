#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace orvo::test {

using Lines = std::vector<std::string>;

/// The journal of the closed libraries from line `from` on; `filter` as OrvoSim_readJournal() takes it.
Lines journal(const std::string& filter = "", uint64_t from = 0);

/// All lines so far, which the journal then forgets.
Lines takeJournal(const std::string& filter = "");

/// Has the board deliver so many pictures on this thread. All of them must find a block.
void deliver(uint32_t count, uint32_t dma = 0, uint32_t board = 0);

}   // namespace orvo::test

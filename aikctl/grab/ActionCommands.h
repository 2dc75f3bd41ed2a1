#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

#include "aikctl/grab/ChannelGrab.h"

namespace orvo::aikctl {

/// What came of the action commands that were sent on one board. Boards are not compared with each other, since
/// each has a clock of its own.
struct ActionCommands {
    std::string board;   // its text
    uint64_t channels = 0;
    uint64_t sent = 0;
    uint64_t matched = 0;   // made a picture on each of the channels, all of one time stamp
};

/// For each board that the grabs fetched from. `sent`: on each of them; the grabs are concluded.
std::vector<ActionCommands> compareActionCommands(const std::deque<ChannelGrab>& grabs, uint64_t sent);

}   // namespace orvo::aikctl

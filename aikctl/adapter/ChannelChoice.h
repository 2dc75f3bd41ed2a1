#pragma once

#include <set>
#include <string>
#include <vector>

#include "aik/aik.hpp"

namespace orvo::aikctl {

/// The channel that a command works on. Numbers change when a board comes, goes or fails; the text of a board
/// doesn't, and on most boards it holds the serial number.
struct ChannelChoice {
    std::string number;   // as `list` shows it; empty: the board counts
    std::string board;    // TEXT[:PROCESS.DMA]: a part of the board's text, and which of its channels
};

inline constexpr const char* kAllChannels = "all";

/// The channels that a command works on.
struct ChannelsChoice {
    std::vector<std::string> numbers = {kAllChannels};
    std::vector<std::string> boards;   // as above; without process and DMA, all channels. If any, instead of
                                       // the numbers
};

/// Opens the chosen channel; its release shuts everything down. Throws runtime_error, which says how many
/// channels there are if there is none of this number, what a board matches if it isn't one channel alone, and
/// why the channel has failed if it has.
aik::Channel openChannel(const aik::Adapter& adapter, const ChannelChoice& choice);

/// The positions of the chosen channels. Throws runtime_error for a number that there isn't, and for a text that
/// matches no board or several.
std::set<size_t> chooseChannels(const std::vector<aik::Channel>& channels, const ChannelsChoice& choice);

}   // namespace orvo::aikctl

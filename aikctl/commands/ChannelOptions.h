#pragma once

#include <string>
#include <vector>

#include "aikctl/adapter/ChannelChoice.h"

namespace CLI   // NOLINT(readability-identifier-naming): the library's own name
{
class App;
}

namespace orvo::aikctl {

/// Adds the channel that a command works on: its number as the first argument, or --board. A command with further
/// arguments calls settleChannel() when the command line is parsed; for one without, this does.
void declareChannel(CLI::App& command, ChannelChoice& choice);

/// With --board, the first argument is no number, and goes in front of the further ones. Throws CLI::ParseError
/// if the channel is neither given by its number nor by its board, or both.
void settleChannel(ChannelChoice& choice, std::vector<std::string>& furtherArguments);

/// Adds the channels that a command works on, by numbers or boards.
void declareChannels(CLI::App& command, ChannelsChoice& choice);

}   // namespace orvo::aikctl

#include "aikctl/grab/ActionCommands.h"

#include <algorithm>
#include <map>
#include <span>

namespace orvo::aikctl {

namespace {

using Stamps = std::span<const uint64_t>;

// The n-th command makes the n-th picture: no command is sent before all channels have fetched that of the last.
uint64_t matching(const std::vector<Stamps>& channels, uint64_t sent)
{
    uint64_t matched = 0;
    for (size_t shot = 0; shot < sent; ++shot)
        matched += std::all_of(channels.begin(), channels.end(), [&](Stamps stamps) {
            return shot < stamps.size() && shot < channels.front().size() &&
                   stamps[shot] == channels.front()[shot];
        });
    return matched;
}

}   // namespace

std::vector<ActionCommands> compareActionCommands(const std::deque<ChannelGrab>& grabs, uint64_t sent)
{
    std::map<std::string, std::vector<Stamps>> boards;
    for (const ChannelGrab& grab : grabs) {
        if (!grab.channel().failure().empty())
            continue;
        boards[grab.channel().boardText()].push_back(grab.result().record.fetchedTimestamps());
    }
    std::vector<ActionCommands> result;
    result.reserve(boards.size());
    for (const auto& [board, channels] : boards)
        result.push_back({board, channels.size(), sent, matching(channels, sent)});
    return result;
}

}   // namespace orvo::aikctl

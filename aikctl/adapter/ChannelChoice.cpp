#include "aikctl/adapter/ChannelChoice.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "aikctl/adapter/Adapter.h"

namespace orvo::aikctl {

namespace {

using Channels = std::vector<aik::Channel>;

/// TEXT[:PROCESS.DMA], taken apart.
struct Pattern {
    explicit Pattern(const std::string& whole) : text(whole)
    {
        const size_t colon = whole.rfind(':');
        const size_t point = whole.rfind('.');
        const auto isNumber = [&](size_t begin, size_t end) {
            return begin < end && whole.find_first_not_of("0123456789", begin) >= end;
        };
        if (colon == std::string::npos || point == std::string::npos || !isNumber(colon + 1, point) ||
            !isNumber(point + 1, whole.size()))
            return;
        text = whole.substr(0, colon);
        // As the adapter names channels.
        nameEnding =
            " process: " + whole.substr(colon + 1, point - colon - 1) + " dma: " + whole.substr(point + 1);
    }

    std::string text;         // a part of the board's text
    std::string nameEnding;   // of the channel; empty: any
};

std::string lines(const std::set<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all.append("\n  ").append(text);
    return all;
}

std::set<std::string> boardsOf(const Channels& channels)
{
    std::set<std::string> boards;
    for (const aik::Channel& channel : channels)
        boards.insert(channel.boardText());
    return boards;
}

std::string describe(const Channels& channels, const std::set<size_t>& positions)
{
    std::string all;
    for (const size_t position : positions)
        all += "\n  channel " + std::to_string(position) + ": " + channels[position].name() + ", " +
               channels[position].boardText();
    return all;
}

std::set<size_t> channelsOf(const Channels& channels, const std::string& board)
{
    const Pattern pattern(board);
    std::set<size_t> ofBoard;
    std::set<size_t> matching;
    std::set<std::string> boards;
    for (size_t position = 0; position < channels.size(); ++position) {
        const aik::Channel& channel = channels[position];
        if (channel.boardText().find(pattern.text) == std::string::npos)
            continue;
        boards.insert(channel.boardText());
        ofBoard.insert(position);
        if (channel.name().ends_with(pattern.nameEnding))
            matching.insert(position);
    }
    if (boards.empty())
        throw std::runtime_error("No board has \"" + pattern.text +
                                 "\" in its text. The boards are:" + lines(boardsOf(channels)));
    if (boards.size() > 1)
        throw std::runtime_error("\"" + pattern.text +
                                 "\" is in the text of several boards:" + lines(boards));
    if (matching.empty())
        throw std::runtime_error("\"" + board +
                                 "\" is no channel. Those of the board are:" + describe(channels, ofBoard));
    // A failed board's only channel has no process in its name, and may be the one that is meant.
    std::set<std::string> names;
    for (const size_t position : ofBoard)
        if (!names.insert(channels[position].name()).second ||
            (!channels[position].failure().empty() && ofBoard.size() > 1))
            throw std::runtime_error(
                "\"" + board + "\" matches several boards of the same text:" + describe(channels, ofBoard));
    return matching;
}

aik::Channel openByNumber(const aik::Adapter& adapter, int32_t index)
{
    try {
        return adapter.open(index);
    } catch (const aik::Error& error) {
        if (error.isEndOfChannels())
            throw noSuchChannel(index, adapter.openAll().size());
        throw std::runtime_error("Channel " + std::to_string(index) + ": " + explained(error.what()));
    }
}

}   // namespace

aik::Channel openChannel(const aik::Adapter& adapter, const ChannelChoice& choice)
{
    if (choice.board.empty())
        return openByNumber(adapter, std::stoi(choice.number));
    Channels channels = adapter.openAll();
    if (channels.empty())
        throw noSuchChannel(0, 0);
    const std::set<size_t> matching = channelsOf(channels, choice.board);
    if (matching.size() > 1)
        throw std::runtime_error("\"" + choice.board + "\" has several channels, add :PROCESS.DMA to it:" +
                                 describe(channels, matching));
    aik::Channel& channel = channels[*matching.begin()];
    if (!channel.failure().empty())
        throw std::runtime_error("Channel " + std::to_string(channel.index()) + ": " +
                                 explained(channel.failure()));
    return std::move(channel);   // the others are released here
}

std::set<size_t> chooseChannels(const std::vector<aik::Channel>& channels, const ChannelsChoice& choice)
{
    if (channels.empty())
        throw noSuchChannel(0, 0);
    std::set<size_t> chosen;
    for (const std::string& board : choice.boards)
        chosen.merge(channelsOf(channels, board));
    if (!chosen.empty())
        return chosen;
    for (const std::string& number : choice.numbers) {
        if (number == kAllChannels) {
            for (size_t position = 0; position < channels.size(); ++position)
                chosen.insert(position);
        } else if (std::stoul(number) < channels.size()) {
            chosen.insert(std::stoul(number));
        } else {
            throw noSuchChannel(std::stoi(number), channels.size());
        }
    }
    return chosen;
}

}   // namespace orvo::aikctl

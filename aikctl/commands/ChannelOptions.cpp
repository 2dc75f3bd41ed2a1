#include "aikctl/commands/ChannelOptions.h"

#include <utility>

#include <CLI/CLI.hpp>

#include "aikctl/commands/Command.h"

namespace orvo::aikctl {

namespace {

constexpr uint64_t kHighestChannel = 9999;   // far more than eight boards can have

constexpr const char* kBoardForm = "TEXT[:PROCESS.DMA]";

std::string complaintAboutNumber(const std::string& text)
{
    return wholeNumber(0, kHighestChannel)(text);
}

std::string checkBoard(const std::string& text)
{
    return text.empty() ? "The text is empty" : "";
}

std::string checkNumberOrAll(const std::string& text)
{
    return complaintAboutNumber(text).empty() || text == kAllChannels
               ? ""
               : text + " is neither a channel's number nor " + kAllChannels;
}

}   // namespace

void declareChannel(CLI::App& command, ChannelChoice& choice)
{
    command.add_option("CHANNEL", choice.number, "Its number, as `list` shows it; not with --board");
    command
        .add_option("-b,--board", choice.board,
                    "The channel by a part of its board's text, and by process and DMA if the board has "
                    "several channels")
        ->type_name(kBoardForm)
        ->check(checkBoard);
    command.parse_complete_callback([&choice] {
        std::vector<std::string> none;
        settleChannel(choice, none);
        if (!none.empty())
            throw CLI::ExcludesError("CHANNEL", "--board");
    });
}

void settleChannel(ChannelChoice& choice, std::vector<std::string>& furtherArguments)
{
    if (!choice.board.empty()) {
        if (!choice.number.empty())
            furtherArguments.insert(furtherArguments.begin(), std::exchange(choice.number, ""));
        return;
    }
    if (choice.number.empty())
        throw CLI::RequiredError("CHANNEL or --board");
    const std::string complaint = complaintAboutNumber(choice.number);
    if (!complaint.empty())
        throw CLI::ValidationError("CHANNEL", complaint);
}

void declareChannels(CLI::App& command, ChannelsChoice& choice)
{
    CLI::Option* const numbers =
        command.add_option("CHANNEL", choice.numbers, "Numbers as `list` shows them, or all")
            ->check(checkNumberOrAll)
            ->capture_default_str();
    command
        .add_option("-b,--board", choice.boards,
                    "Channels by a part of their board's text instead of their numbers: all of a board, or "
                    "one by process and DMA; can be given several times")
        ->type_name(kBoardForm)
        ->allow_extra_args(false)
        ->check(checkBoard)
        ->excludes(numbers);
}

}   // namespace orvo::aikctl

#include "aikctl/commands/Command.h"

#include <string>

#include <CLI/CLI.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

void declareChannel(CLI::App& command, int32_t& channel)
{
    command.add_option("CHANNEL", channel, "Its number, as `list` shows it")
        ->required()
        ->check(CLI::NonNegativeNumber);
}

void connectCameras(BoardCameras& cameras, Console& console)
{
    try {
        cameras.connect();
        if (cameras.ports().empty())
            console.note("no camera was found");
    } catch (const aik::Error& failure) {
        if (cameras.ports().empty())
            throw;
        console.fail(failure.what());
    }
}

void releaseAll(std::vector<aik::Channel>& channels, Console& console)
{
    for (aik::Channel& channel : channels) {
        try {
            channel.release();
        } catch (const aik::Error& failure) {
            console.fail("channel " + std::to_string(channel.index()) + ": " + failure.what());
        }
    }
}

}   // namespace orvo::aikctl

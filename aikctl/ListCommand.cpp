#include "aikctl/ListCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/Adapter.h"
#include "aikctl/Console.h"
#include "aikctl/Table.h"
#include "aikctl/releaseAll.h"
#include "aikctl/toJsonText.h"

namespace orvo::aikctl {

namespace {

void printJson(const Adapter& adapter, const std::vector<Channel>& channels, std::ostream& out)
{
    nlohmann::ordered_json list = {{"adapter", adapter.path()}};
    auto& entries = list["channels"] = nlohmann::ordered_json::array();
    for (const Channel& channel : channels)
        entries.push_back({{"channel", channel.index()},
                           {"name", channel.name()},
                           {"width", channel.width()},
                           {"height", channel.height()},
                           {"board", channel.boardText()},
                           {"failure", channel.failure()}});
    out << toJsonText(list) << std::endl;
}

void printTable(const Adapter& adapter, const std::vector<Channel>& channels, std::ostream& out)
{
    out << "adapter  " << adapter.path() << "\n\n";
    Table table({"channel", "name", "size", "board"});
    for (const Channel& channel : channels)
        table.add({std::to_string(channel.index()), channel.name(),
                   channel.failure().empty()
                       ? std::to_string(channel.width()) + " x " + std::to_string(channel.height())
                       : "failed",
                   channel.boardText()});
    table.print(out);
    for (const Channel& channel : channels)
        if (!channel.failure().empty())
            out << "channel " << channel.index() << " failed: " << channel.failure() << '\n';
}

}   // namespace

CLI::App* ListCommand::declare(CLI::App& program)
{
    return program.add_subcommand("list", "Lists the channels");
}

void ListCommand::run(const Adapter& adapter, const CommonOptions& common, Console& console)
{
    std::vector<Channel> channels = adapter.openAll();
    if (common.json)
        printJson(adapter, channels, console.out());
    else if (channels.empty())
        console.out() << "no channels: the adapter found no board\n";
    else
        printTable(adapter, channels, console.out());
    releaseAll(channels, console);
}

}   // namespace orvo::aikctl

#include <algorithm>
#include <ostream>

#include <nlohmann/json.hpp>

#include "aikctl/adapter/Adapter.h"
#include "aikctl/commands/Command.h"
#include "aikctl/console/Console.h"
#include "aikctl/console/Table.h"
#include "aikctl/console/Text.h"
#include "os/PathText.h"

namespace orvo::aikctl {

namespace {

nlohmann::ordered_json toJson(const aik::Adapter& adapter, const std::vector<aik::Channel>& channels)
{
    nlohmann::ordered_json list = {{"adapter", os::textOf(adapter.path())}};
    auto& entries = list["channels"] = nlohmann::ordered_json::array();
    for (const aik::Channel& channel : channels)
        entries.push_back({{"channel", channel.index()},
                           {"name", channel.name()},
                           {"width", channel.width()},
                           {"height", channel.height()},
                           {"board", channel.boardText()},
                           {"failure", channel.failure()}});
    return list;
}

void printTable(const aik::Adapter& adapter, const std::vector<aik::Channel>& channels, std::ostream& out)
{
    out << "adapter  " << readable(os::textOf(adapter.path())) << "\n\n";
    Table table({"channel", "name", "size", "board"});
    for (const aik::Channel& channel : channels)
        table.add({std::to_string(channel.index()), channel.name(),
                   channel.failure().empty()
                       ? std::to_string(channel.width()) + " x " + std::to_string(channel.height())
                       : "failed",
                   channel.boardText()});
    table.print(out);
    for (const aik::Channel& channel : channels)
        if (!channel.failure().empty())
            out << "channel " << channel.index() << " failed: " << readable(explained(channel.failure()))
                << '\n';
}

/// `list`: every channel with its name, size and board, and the reason if it failed.
class ListCommand : public Command {
public:
    void declare(CLI::App& /*self*/) override {}

    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override
    {
        std::vector<aik::Channel> channels = adapter.openAll();
        if (common.json)
            console.print(toJson(adapter, channels));
        else if (!channels.empty())
            printTable(adapter, channels, console.out());
        if (channels.empty())
            console.fail("There is no channel: the adapter found no board");
        else if (std::ranges::none_of(channels,
                                      [](const auto& channel) { return channel.failure().empty(); }))
            console.fail("No channel can be used");
        releaseAll(channels, console);
    }
};

}   // namespace

std::unique_ptr<Command> makeListCommand()
{
    return std::make_unique<ListCommand>();
}

}   // namespace orvo::aikctl

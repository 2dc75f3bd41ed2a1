#include <algorithm>
#include <array>
#include <map>
#include <ostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/adapter/FeatureList.h"
#include "aikctl/commands/Command.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

constexpr const char* kPreface =
    R"(<!-- Made by `aikctl reference` from the running adapter, over the simulated boards. Not written by hand. -->

# Features

What a channel has. Features are reached by name through `ReadValue`, `WriteValue` and `ExecuteCommand`,
and all values are text ([aik.h](../include/aik/aik.h)). How to lead a camera, step by step: [cameras.md](cameras.md).

A channel of a board with GigE Vision cameras has all of them, any other all that have a number in its column. The
number is the feature's position in `GetFeatureName`.

| Word | Available |
| --- | --- |
| always | from the channel's opening to its release |
| open | while the camera connector is open, after "InitializeCameraConnector" |
| connected | while a connected camera is selected, after "Detect" |
| never | to be found in the list, not to be read |
| ? | nothing tells but executing it: the connector's commands lead through the order of their calls |

Access: r can be read, w can be written; a command needs neither. A feature that is not available refuses with
"Feature is not available."

)";

/// The channels of one kind of board.
struct Kind {
    const char* name;
    std::map<std::string, std::string> places;   // by feature: its number and when it is available
};

/// The three stages at which availability is looked at, in the words of the page.
constexpr std::array kStages = {"always", "open", "connected"};

std::string whenAvailable(const std::vector<std::vector<FeatureDescription>>& stages, size_t number)
{
    for (size_t stage = 0; stage < stages.size(); ++stage) {
        const auto& isAvailable = stages[stage][number].isAvailable;
        if (!isAvailable)
            return "?";
        if (*isAvailable)
            return kStages.at(stage);
    }
    return "never";
}

std::string asCell(const std::vector<std::string>& entries)
{
    std::string all;
    for (const std::string& entry : entries)
        all += (all.empty() ? " Entries: " : ", ") + ("\"" + entry + "\"");
    return all;
}

/// The page, made from one working channel of each kind.
class Reference {
public:
    void add(aik::Channel& channel)
    {
        BoardCameras cameras(channel);
        Kind& kind = m_kinds.at(cameras.knowsActionCommands() ? 0 : 1);
        if (!kind.places.empty())
            return;
        std::vector<std::vector<FeatureDescription>> stages = {describeFeatures(channel)};
        cameras.open();
        stages.push_back(describeFeatures(channel));
        cameras.detect();
        if (cameras.ports().empty())
            throw std::runtime_error("Channel " + std::to_string(channel.index()) +
                                     ": no camera is there to show its features");
        stages.push_back(describeFeatures(channel));
        cameras.close();
        for (size_t number = 0; number < stages.front().size(); ++number) {
            const FeatureDescription& feature = stages.front()[number];
            kind.places[feature.name] = std::to_string(number) + " | " + whenAvailable(stages, number);
            const auto isKnown = [&](const FeatureDescription& known) { return known.name == feature.name; };
            if (std::none_of(m_features.begin(), m_features.end(), isKnown))
                m_features.push_back(feature);
        }
    }

    std::string page() const
    {
        std::ostringstream out;
        out << kPreface << "| Feature | Type | Access ";
        for (const Kind& kind : m_kinds)
            out << "| " << kind.name << " | available ";
        out << "| Description |\n| --- | --- | --- | --- | --- | --- | --- | --- |\n";
        for (const FeatureDescription& feature : m_features) {
            out << "| \"" << feature.name << "\" | " << feature.type << " | "
                << (feature.isReadable || feature.isWriteable ? feature.access() : "");
            for (const Kind& kind : m_kinds) {
                const auto place = kind.places.find(feature.name);
                out << " | " << (place == kind.places.end() ? "- | -" : place->second);
            }
            out << " | " << feature.description << asCell(feature.entries) << " |\n";
        }
        return out.str();
    }

    /// Throws runtime_error if no channel of some kind was added.
    void requireAllKinds() const
    {
        for (const Kind& kind : m_kinds)
            if (kind.places.empty())
                throw std::runtime_error(std::string("No channel works that has cameras of this kind: ") +
                                         kind.name);
    }

private:
    std::array<Kind, 2> m_kinds = {{{"GigE Vision", {}}, {"others", {}}}};
    std::vector<FeatureDescription> m_features;   // of all kinds, in the order of the first
};

/// `reference`: the page about the features of all kinds of channels, made from the running adapter. Connects
/// cameras to see when each feature is available.
class ReferenceCommand : public Command {
public:
    void declare(CLI::App& /*self*/) override {}

    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override
    {
        std::vector<aik::Channel> channels = adapter.openAll();
        Reference reference;
        for (aik::Channel& channel : channels)
            if (channel.failure().empty())
                reference.add(channel);
        reference.requireAllKinds();
        if (common.json)
            console.print({{"page", reference.page()}});
        else
            console.out() << reference.page() << std::flush;
        releaseAll(channels, console);
    }
};

}   // namespace

std::unique_ptr<Command> makeReferenceCommand()
{
    return std::make_unique<ReferenceCommand>();
}

}   // namespace orvo::aikctl

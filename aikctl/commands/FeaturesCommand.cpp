#include <ostream>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/adapter/BoardCameras.h"
#include "aikctl/adapter/ChannelChoice.h"
#include "aikctl/adapter/FeatureList.h"
#include "aikctl/commands/CameraOptions.h"
#include "aikctl/commands/ChannelOptions.h"
#include "aikctl/commands/Command.h"
#include "aikctl/console/Console.h"
#include "aikctl/console/Table.h"

namespace orvo::aikctl {

namespace {

std::string availabilityText(const FeatureDescription& feature)
{
    if (!feature.isAvailable)
        return "?";
    return *feature.isAvailable ? "yes" : "no";
}

std::string valueText(const FeatureDescription& feature)
{
    if (feature.value)
        return *feature.value;
    return feature.failure.empty() ? "-" : "(" + feature.failure + ")";
}

std::string joined(const std::vector<std::string>& texts)
{
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : ", ") + text;
    return all.empty() ? "-" : all;
}

/// What is asked for most comes first, since a terminal cuts the rest.
Table tableOf(const std::vector<FeatureDescription>& features)
{
    Table table({"name", "access", "available", "value", "type", "entries", "description"});
    for (const FeatureDescription& feature : features)
        table.add({feature.name, feature.access(), availabilityText(feature), valueText(feature),
                   feature.type, joined(feature.entries), feature.description});
    return table;
}

nlohmann::ordered_json toJson(const aik::Channel& channel, const std::vector<FeatureDescription>& features)
{
    using nlohmann::ordered_json;
    ordered_json list = {{"channel", channel.index()}, {"name", channel.name()}};
    auto& entries = list["features"] = ordered_json::array();
    for (const FeatureDescription& feature : features)
        entries.push_back({{"number", feature.number},
                           {"name", feature.name},
                           {"type", feature.type},
                           {"readable", feature.isReadable},
                           {"writeable", feature.isWriteable},
                           {"available", feature.isAvailable ? ordered_json(*feature.isAvailable) : nullptr},
                           {"value", feature.value ? ordered_json(*feature.value) : nullptr},
                           {"failure", feature.failure},
                           {"entries", feature.entries},
                           {"description", feature.description}});
    return list;
}

/// `features`: the features of a channel as they are now. Changes and executes none.
class FeaturesCommand : public Command {
public:
    void declare(CLI::App& self) override
    {
        declareChannel(self, m_channel);
        declareCameraChoice(self, m_camera);
        self.add_flag("--wide", m_isWide, "Show whole lines on a terminal that is too narrow for them");
    }

    void run(const aik::Adapter& adapter, const CommonOptions& common, Console& console) override
    {
        aik::Channel channel = openChannel(adapter, m_channel);
        BoardCameras cameras(channel);
        if (m_camera.isConnected && !connectCamera(cameras, m_camera, console))
            console.note(placeOf(channel) + ": this is the first one of the cameras at " +
                         cameras.describePorts() + ", which may feed another channel; --port chooses");
        const auto features = describeFeatures(channel);
        if (common.json)
            console.print(toJson(channel, features));
        else
            tableOf(features).print(console.out(), m_isWide ? 0 : console.columns());
        closeCameras(cameras, console);
        channel.release();
    }

private:
    ChannelChoice m_channel;
    CameraChoice m_camera;
    bool m_isWide = false;
};

}   // namespace

std::unique_ptr<Command> makeFeaturesCommand()
{
    return std::make_unique<FeaturesCommand>();
}

}   // namespace orvo::aikctl

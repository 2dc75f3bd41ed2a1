#include "aikctl/FeaturesCommand.h"

#include <ostream>

#include <CLI/CLI.hpp>

#include "aikctl/Adapter.h"
#include "aikctl/BoardCameras.h"
#include "aikctl/Console.h"
#include "aikctl/FeatureList.h"
#include "aikctl/Table.h"
#include "aikctl/connectCameras.h"
#include "aikctl/toJsonText.h"

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

void printTable(const std::vector<FeatureDescription>& features, std::ostream& out)
{
    Table table({"number", "name", "type", "access", "available", "value", "entries", "description"});
    for (const FeatureDescription& feature : features)
        table.add({std::to_string(feature.number), feature.name, feature.type, feature.access(),
                   availabilityText(feature), valueText(feature), joined(feature.entries),
                   feature.description});
    table.print(out);
}

void printJson(const Channel& channel, const std::vector<FeatureDescription>& features, std::ostream& out)
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
    out << toJsonText(list) << std::endl;
}

}   // namespace

CLI::App* FeaturesCommand::declare(CLI::App& program)
{
    CLI::App* const features = program.add_subcommand(
        "features", "Lists the features of a channel as they are, and executes and changes none");
    features->add_option("CHANNEL", m_channel, "Its number, as `list` shows it")
        ->required()
        ->check(CLI::NonNegativeNumber);
    features->add_flag("--camera", m_isWithCamera, "Connect the cameras of the board first");
    return features;
}

void FeaturesCommand::run(const Adapter& adapter, const CommonOptions& common, Console& console)
{
    Channel channel = adapter.open(m_channel);
    BoardCameras cameras(channel);
    if (m_isWithCamera)
        connectCameras(cameras, console);
    const auto features = describeFeatures(channel);
    if (common.json)
        printJson(channel, features, console.out());
    else
        printTable(features, console.out());
    cameras.close();
    channel.release();
}

}   // namespace orvo::aikctl

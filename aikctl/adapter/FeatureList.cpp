#include "aikctl/adapter/FeatureList.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orvo::aikctl {

namespace {

struct TypeRow {
    aik::FeatureType type;
    const char* name;
};

constexpr TypeRow kTypes[] = {
    {aik::FeatureType::Enumeration, "enumeration"},
    {aik::FeatureType::Integer, "integer"},
    {aik::FeatureType::Float, "float"},
    {aik::FeatureType::Command, "command"},
    {aik::FeatureType::Boolean, "boolean"},
    {aik::FeatureType::String, "string"},
};

std::string typeName(aik::FeatureType type)
{
    const auto* const row = std::ranges::find(kTypes, type, &TypeRow::type);
    return row == std::end(kTypes) ? "none" : row->name;
}

/// A read tells, and changes nothing. So does writing to a command: the adapter refuses it either way, and
/// the text says why.
void askForAvailability(aik::Channel& channel, bool isCommand, FeatureDescription& feature)
{
    try {
        if (feature.isReadable)
            feature.value = channel.read(feature.name);
        else if (feature.isWriteable && isCommand)
            channel.write(feature.name, "");
        else
            return;
        feature.isAvailable = true;
    } catch (const aik::Error& failure) {
        feature.isAvailable = !failure.isFeatureUnavailable();
        if (*feature.isAvailable && !isCommand)
            feature.failure = failure.what();
    }
}

}   // namespace

std::string FeatureDescription::access() const
{
    return std::string(isReadable ? "r" : "-") + (isWriteable ? "w" : "-");
}

std::vector<FeatureDescription> describeFeatures(aik::Channel& channel)
{
    std::vector<FeatureDescription> all;
    for (aik::Feature& feature : channel.features()) {
        FeatureDescription description{};
        description.number = static_cast<uint32_t>(all.size());
        description.name = std::move(feature.name);
        description.type = typeName(feature.type);
        description.isReadable = feature.isReadable;
        description.isWriteable = feature.isWriteable;
        description.entries = std::move(feature.entries);
        description.description = std::move(feature.description);
        askForAvailability(channel, feature.type == aik::FeatureType::Command, description);
        all.push_back(std::move(description));
    }
    return all;
}

}   // namespace orvo::aikctl

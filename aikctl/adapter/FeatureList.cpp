#include "aikctl/adapter/FeatureList.h"

#include <algorithm>
#include <iterator>

#include "aik/aik.h"

namespace orvo::aikctl {

namespace {

constexpr uint32_t kHighestEntry = 255;   // the highest value that an enumeration entry is looked for at

struct TypeRow {
    uint32_t type;
    const char* name;
};

constexpr TypeRow kTypes[] = {
    {AIK_TYPE_ENUMERATION, "enumeration"}, {AIK_TYPE_INTEGER, "integer"}, {AIK_TYPE_FLOAT, "float"},
    {AIK_TYPE_COMMAND, "command"},         {AIK_TYPE_BOOLEAN, "boolean"}, {AIK_TYPE_STRING, "string"},
};

std::string typeName(uint32_t type)
{
    const auto* const row = std::find_if(std::begin(kTypes), std::end(kTypes),
                                         [&](const TypeRow& candidate) { return candidate.type == type; });
    return row == std::end(kTypes) ? "none" : row->name;
}

std::vector<std::string> entriesOf(const Channel& channel, const std::string& feature)
{
    std::vector<std::string> entries;
    for (uint32_t value = 0; value <= kHighestEntry; ++value)
        if (auto entry = channel.enumEntry(feature, value))
            entries.push_back(std::move(*entry));
    return entries;
}

/// A read tells, and changes nothing. So does writing to a command: the adapter refuses it either way, and
/// the text says why.
void askForAvailability(Channel& channel, bool isCommand, FeatureDescription& feature)
{
    try {
        if (feature.isReadable)
            feature.value = channel.read(feature.name);
        else if (feature.isWriteable && isCommand)
            channel.write(feature.name, "");
        else
            return;
        feature.isAvailable = true;
    } catch (const AdapterFailure& failure) {
        feature.isAvailable = !failure.isFeatureUnavailable();
        if (*feature.isAvailable && !isCommand)
            feature.failure = failure.what();
    }
}

FeatureDescription describe(Channel& channel, uint32_t number, const std::string& name)
{
    const uint32_t type = channel.featureType(name);
    FeatureDescription feature{};
    feature.number = number;
    feature.name = name;
    feature.type = typeName(type);
    feature.isReadable = channel.featureAttribute(name, AIK_ATTR_READABLE) == kTrue;
    feature.isWriteable = channel.featureAttribute(name, AIK_ATTR_WRITEABLE) == kTrue;
    feature.description = channel.featureAttribute(name, AIK_ATTR_DESCRIPTION);
    if (type == AIK_TYPE_ENUMERATION)
        feature.entries = entriesOf(channel, name);
    askForAvailability(channel, type == AIK_TYPE_COMMAND, feature);
    return feature;
}

}   // namespace

std::string FeatureDescription::access() const
{
    return std::string(isReadable ? "r" : "-") + (isWriteable ? "w" : "-");
}

std::vector<FeatureDescription> describeFeatures(Channel& channel)
{
    std::vector<FeatureDescription> features;
    for (uint32_t number = 0;; ++number) {
        const auto name = channel.featureName(number);
        if (!name)
            return features;
        features.push_back(describe(channel, number, *name));
    }
}

}   // namespace orvo::aikctl

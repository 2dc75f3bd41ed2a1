#include "aikctl/adapter/Parameters.h"

#include <algorithm>
#include <initializer_list>
#include <stdexcept>

namespace orvo::aikctl {

namespace {

constexpr const char* kCommandFeature = "CameraCommand";

constexpr ParameterAccess::ValueFeature kBoardValues[] = {
    {"BrdIntValue", kIntegerKind},
    {"BrdFloatValue", "float"},
    {"BrdStringValue", "string"},
};

constexpr ParameterAccess::ValueFeature kCameraValues[] = {
    {"CameraIntValue", kIntegerKind},  {"CameraFloatValue", "float"},
    {"CameraBooleanValue", "boolean"}, {"CameraEnumerationValue", "enumeration"},
    {"CameraStringValue", "string"},
};

/// The parameter, or why none of the value features can read it.
struct Search {
    std::optional<Parameter> found;
    std::string failure;
};

Search findParameter(aik::Channel& channel, const ParameterAccess& access, const std::string& name)
{
    channel.write(access.keyFeature, name);
    Search search;
    for (const auto& row : access.values) {   // only the one of the right type can be read
        try {
            search.found = {&row, channel.read(row.feature)};
            return search;
        } catch (const aik::Error& refusal) {
            search.failure = refusal.what();
        }
    }
    return search;
}

}   // namespace

const ParameterAccess kBoardParameters = {"BrdFeatureKey", kBoardValues};
const ParameterAccess kCameraParameters = {"CameraFeatureKey", kCameraValues};

std::optional<Parameter> readParameter(aik::Channel& channel, const ParameterAccess& access,
                                       const std::string& name)
{
    return findParameter(channel, access, name).found;
}

Written writeParameter(aik::Channel& channel, const ParameterAccess& access, const std::string& name,
                       const std::string& value)
{
    const Search search = findParameter(channel, access, name);
    if (!search.found)
        throw aik::Error(search.failure);
    const std::string feature = search.found->by->feature;
    if (channel.feature(feature).type != aik::FeatureType::Boolean)
        return writeChecked(channel, feature, value);
    if (value != aik::kTrue && value != aik::kFalse)
        throw std::runtime_error("it is either " + std::string(aik::kTrue) + " or " + aik::kFalse);
    return writeSwitch(channel, feature, value == aik::kTrue);
}

std::string keyFeatureOf(const std::string& feature)
{
    if (feature == kCommandFeature)
        return kCameraParameters.keyFeature;
    for (const ParameterAccess* const access : {&kBoardParameters, &kCameraParameters})
        for (const auto& row : access->values)
            if (feature == row.feature)
                return access->keyFeature;
    return "";
}

}   // namespace orvo::aikctl

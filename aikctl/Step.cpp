#include "aikctl/Step.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace orvo::aikctl {

namespace {

struct WordRow {
    const char* word;
    Step::Kind kind;
};

constexpr WordRow kWords[] = {
    {"get", Step::Kind::Get},
    {"set", Step::Kind::Set},
    {"exec", Step::Kind::Execute},
};

Step::Kind kindOf(const std::string& word)
{
    const auto* const row = std::find_if(std::begin(kWords), std::end(kWords),
                                         [&](const WordRow& candidate) { return candidate.word == word; });
    if (row == std::end(kWords))
        throw std::runtime_error(word + " is no step: get FEATURE, set FEATURE=VALUE or exec FEATURE");
    return row->kind;
}

Step stepOf(const std::string& word, const std::string& target)
{
    const Step::Kind kind = kindOf(word);
    if (kind != Step::Kind::Set)
        return {kind, target, ""};
    const size_t sign = target.find('=');
    if (sign == std::string::npos)
        throw std::runtime_error("set " + target + " has no value: set FEATURE=VALUE");
    return {kind, target.substr(0, sign), target.substr(sign + 1)};
}

constexpr std::array<std::string_view, 3> kBoardValues = {"BrdStringValue", "BrdIntValue", "BrdFloatValue"};
constexpr std::array<std::string_view, 6> kCameraValues = {"CameraStringValue",      "CameraIntValue",
                                                           "CameraFloatValue",       "CameraBooleanValue",
                                                           "CameraEnumerationValue", "CameraCommand"};

}   // namespace

std::string Step::text() const
{
    const auto* const row = std::find_if(std::begin(kWords), std::end(kWords),
                                         [&](const WordRow& candidate) { return candidate.kind == kind; });
    return std::string(row->word) + " " + feature + (kind == Kind::Set ? "=" + value : "");
}

std::vector<Step> parseSteps(const std::vector<std::string>& words)
{
    std::vector<Step> steps;
    for (size_t i = 0; i < words.size(); i += 2) {
        if (i + 1 == words.size()) {
            kindOf(words[i]);
            throw std::runtime_error(words[i] + " lacks its feature");
        }
        steps.push_back(stepOf(words[i], words[i + 1]));
    }
    return steps;
}

std::optional<std::string> carryOut(const Step& step, Channel& channel)
{
    switch (step.kind) {
    case Step::Kind::Get:
        return channel.read(step.feature);
    case Step::Kind::Set:
        channel.write(step.feature, step.value);
        break;
    case Step::Kind::Execute:
        channel.execute(step.feature);
        break;
    }
    return std::nullopt;
}

std::string keyFeatureOf(const std::string& feature)
{
    const auto isOneOf = [&](const auto& names) {
        return std::find(names.begin(), names.end(), feature) != names.end();
    };
    if (isOneOf(kBoardValues))
        return "BrdFeatureKey";
    return isOneOf(kCameraValues) ? "CameraFeatureKey" : "";
}

}   // namespace orvo::aikctl

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "aikctl/Channel.h"

namespace orvo::aikctl {

/// One thing to do with a feature of an open channel.
struct Step {
    enum class Kind { Get, Set, Execute };

    Kind kind;
    std::string feature;
    std::string value;   // to set

    /// As it is written on the command line.
    std::string text() const;
};

/// The steps that these words ask for: `get FEATURE`, `set FEATURE=VALUE`, `exec FEATURE`, any number of
/// them. Throws runtime_error that says which word makes no sense.
std::vector<Step> parseSteps(const std::vector<std::string>& words);

/// Does it; answers what a get has read. Throws AdapterFailure.
std::optional<std::string> carryOut(const Step& step, Channel& channel);

/// The feature that holds the key of the parameter that `feature` reaches; empty for one without a key.
std::string keyFeatureOf(const std::string& feature);

}   // namespace orvo::aikctl

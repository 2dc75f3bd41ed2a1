#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "aikctl/Channel.h"

namespace orvo::aikctl {

/// A feature as a host sees it at the moment.
struct FeatureDescription {
    uint32_t number;   // its position in the channel's list
    std::string name;
    std::string type;   // for people
    bool isReadable;
    bool isWriteable;
    std::optional<bool> isAvailable;    // none: only executing it would tell
    std::optional<std::string> value;   // if it can be read
    std::string failure;                // of the read, if the feature is available all the same
    std::vector<std::string> entries;   // of an enumeration, by value
    std::string description;

    /// "rw", with a dash for what can't be done.
    std::string access() const;
};

/// All features of the channel, in their order. Changes nothing and executes nothing. Throws AdapterFailure.
std::vector<FeatureDescription> describeFeatures(Channel& channel);

}   // namespace orvo::aikctl

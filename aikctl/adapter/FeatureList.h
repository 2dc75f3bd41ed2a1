#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "aik/aik.hpp"

namespace orvo::aikctl {

/// A feature as a host sees it at this moment.
struct FeatureDescription {
    uint32_t number;   // its position in the channel's list
    std::string name;
    std::string type;   // its name, for people
    bool isReadable;
    bool isWriteable;
    std::optional<bool> isAvailable;    // none: only executing the feature would tell
    std::optional<std::string> value;   // if it can be read
    std::string failure;                // why it can't be read although it is available
    std::vector<std::string> entries;   // of an enumeration, ordered by value
    std::string description;

    /// "rw", with a dash for what can't be done.
    std::string access() const;
};

/// All features of the channel, in the adapter's order. Changes and executes nothing. Throws aik::Error.
std::vector<FeatureDescription> describeFeatures(aik::Channel& channel);

}   // namespace orvo::aikctl

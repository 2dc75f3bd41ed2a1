#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>

#include "aik/aik.hpp"

namespace orvo::aikctl {

/// Where the adapter is looked for by default: beside this program.
std::string defaultAdapterPath();

/// Loads the adapter. Checks first that the libraries which it needs are there: without the board library its
/// first call would end the process, and without a camera library the system refuses to load it and doesn't
/// name what is missing. Throws aik::LoadError that names the missing file and where it was looked for.
aik::Adapter loadAdapter(const std::string& path);

/// What to throw where a channel is asked for that isn't there; `channels`: how many there are.
std::runtime_error noSuchChannel(int32_t index, size_t channels);

/// The failure of a channel in the adapter's words, and the value of the applet variable that it blames.
std::string explained(const std::string& failure);

}   // namespace orvo::aikctl

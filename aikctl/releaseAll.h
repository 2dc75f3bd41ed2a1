#pragma once

#include <vector>

#include "aikctl/Channel.h"

namespace orvo::aikctl {

class Console;

/// Closes the channels in their order. One that fails is told to the console, and the rest goes on.
void releaseAll(std::vector<Channel>& channels, Console& console);

}   // namespace orvo::aikctl

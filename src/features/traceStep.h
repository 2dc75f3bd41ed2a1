#pragma once

#include <ostream>
#include <source_location>

#include "features/AdapterFeature.h"
#include "tools/logging/Record.h"

namespace orvo::cognex {

/// Records that a step of a feature's access begins or ends, on level 1. `sourcePath` is the source's path
/// below src/ without its ending.
inline void traceStep(AdapterFeature& feature, const char* sourcePath, const char* step,
                      const std::source_location& place = std::source_location::current())
{
    tools::logging::recordTrace(feature.logger(), {sourcePath, place.line()},
                                [&](std::ostream& text) { text << step; });
}

}   // namespace orvo::cognex

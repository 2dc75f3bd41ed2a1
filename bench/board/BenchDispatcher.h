#pragma once

#include <cstdint>

namespace orvo::bench {

/// "BenchDispatcher_setLevel" of `common-logging-dispatcher`: sets the lowest level that is on, for every logger.
/// Not while the adapter loads the dispatcher or leaves it.
using SetLevelFunction = void (*)(int32_t level);

}   // namespace orvo::bench

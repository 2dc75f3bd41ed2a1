#pragma once

#include <cstdint>

/// Sets the lowest level that is on, for every logger. Look it up in `common-logging-dispatcher`. Not while the
/// adapter loads or leaves the dispatcher.
using BenchDispatcher_setLevel_t = void (*)(int32_t level);

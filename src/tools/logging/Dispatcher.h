#pragma once

#include <cstdint>

namespace orvo::tools::logging {

// The interface of the logging dispatcher, a library of its own that may be missing.

/// Stores the number of the logger called `name` and the lowest level that is on for it.
using QueryFunction = void (*)(const char* name, int64_t* id, int32_t* level);
using WriteFunction = void (*)(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord);

/// The data that the dispatcher exports as "logging_dispatcher_descriptor". It may call `gone` and
/// `levelChanged` on any thread between attach and detach.
struct DispatcherDescriptor {
    void (*attach)(void* logging, void (*gone)(), void (*levelChanged)(int64_t id, int32_t level),
                   QueryFunction* whereQuery, WriteFunction* whereWrite);
    void (*detach)(void* logging, void* descriptor);
};

}   // namespace orvo::tools::logging

// A logging dispatcher that drops every record, so that a bench measures what the adapter spends on one.

#include "bench/board/BenchDispatcher.h"

#include <atomic>

#include "tools/logging/Logging.h"

namespace {

constexpr int64_t kEveryLogger = 1;   // all names share one number, and so one level

std::atomic<int32_t> g_level{orvo::tools::logging::kOff};
void (*g_levelChanged)(int64_t id, int32_t level) = nullptr;

void query(const char* /*name*/, int64_t* id, int32_t* level)
{
    *id = kEveryLogger;
    *level = g_level.load();
}

void write(int64_t /*id*/, int32_t /*level*/, const char* /*text*/, uint32_t /*word*/, uint64_t /*longWord*/)
{}

void attach(void* /*logging*/, void (* /*gone*/)(), void (*levelChanged)(int64_t, int32_t),
            orvo::tools::logging::QueryFunction* whereQuery, orvo::tools::logging::WriteFunction* whereWrite)
{
    g_levelChanged = levelChanged;
    *whereQuery = query;
    *whereWrite = write;
}

void detach(void* /*logging*/, void* /*descriptor*/)
{
    g_levelChanged = nullptr;
}

}   // namespace

extern "C" {

extern const orvo::tools::logging::DispatcherDescriptor logging_dispatcher_descriptor;
const orvo::tools::logging::DispatcherDescriptor logging_dispatcher_descriptor = {attach, detach};

void BenchDispatcher_setLevel(int32_t level);
void BenchDispatcher_setLevel(int32_t level)
{
    g_level = level;
    if (g_levelChanged)
        g_levelChanged(kEveryLogger, level);
}

}   // extern "C"

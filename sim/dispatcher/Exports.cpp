#include <cstdint>

#include "sim/dispatcher/Dispatcher.h"
#include "sim/orvo_sim_dispatcher.h"

namespace {

using orvo::sim::Dispatcher;

using QueryFunction = void (*)(const char* name, int64_t* id, int32_t* level);
using WriteFunction = void (*)(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord);

const char* textOrEmpty(const char* text)
{
    return text ? text : "";
}

void query(const char* name, int64_t* id, int32_t* level)
{
    Dispatcher::instance().query(textOrEmpty(name), *id, *level);
}

void write(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord)
{
    Dispatcher::instance().write(id, level, textOrEmpty(text), word, longWord);
}

void attach(void* logging, Dispatcher::GoneFunction gone, Dispatcher::LevelChangedFunction levelChanged,
            QueryFunction* whereQuery, WriteFunction* whereWrite)
{
    *whereQuery = &query;
    *whereWrite = &write;
    Dispatcher::instance().attach(logging, gone, levelChanged);
}

void detach(void* logging, void* /*descriptor*/)
{
    Dispatcher::instance().detach(logging);
}

}   // namespace

extern "C" {

/// What a client looks up: the two functions by which it comes and goes.
struct LoggingDispatcherDescriptor {
    decltype(&attach) attachFunction;
    decltype(&detach) detachFunction;
};
extern const LoggingDispatcherDescriptor logging_dispatcher_descriptor;
const LoggingDispatcherDescriptor logging_dispatcher_descriptor = {&attach, &detach};

void OrvoSimLog_setLevel(const char* logger, int32_t level)
{
    Dispatcher::instance().setLevel(textOrEmpty(logger), level);
}

void OrvoSimLog_goAway(void)
{
    Dispatcher::instance().goAway();
}

uint64_t OrvoSimLog_countAttached(void)
{
    return Dispatcher::instance().countAttached();
}

void OrvoSimLog_capture(int32_t on)
{
    Dispatcher::instance().capture().set(on != 0);
}

int32_t OrvoSimLog_read(uint64_t index, OrvoSimLog_Record* record)
{
    return Dispatcher::instance().capture().read(index, *record) ? 1 : 0;
}

void OrvoSimLog_clear(void)
{
    Dispatcher::instance().capture().clear();
}

}   // extern "C"

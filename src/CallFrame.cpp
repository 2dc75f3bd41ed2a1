#include "CallFrame.h"

#include <exception>

#include "templates/platform/Singletons.h"

namespace orvo::cognex {

namespace {

using templates::platform::LibraryInitController;

LogWrap* g_instance = nullptr;   // plain: nothing of ours may run at the end of the process

}   // namespace

LogWrap::LogWrap()
{
    LibraryInitController::init();
}

LogWrap::~LogWrap()
{
    LibraryInitController::deinit();
}

LogWrap* LogWrap::instance()
{
    return g_instance;
}

void LogWrap::createInstance() noexcept
try {
    if (!g_instance)
        g_instance = new LogWrap;
} catch (const std::exception&) {   // no memory for it: no logging
}

void LogWrap::destroyInstance()
{
    delete g_instance;
    g_instance = nullptr;
}

}   // namespace orvo::cognex

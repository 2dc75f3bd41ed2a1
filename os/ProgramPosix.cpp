#include "os/Program.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#include <unistd.h>

namespace orvo::os {

namespace {

std::atomic<bool> g_interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);   // so that a signal handler may set it

}   // namespace

void setEnvironmentVariable(const std::string& name, const std::string& value)
{
    if (value.empty())
        unsetenv(name.c_str());
    else
        setenv(name.c_str(), value.c_str(), 1);
}

void catchInterrupts()
{
    struct sigaction action {};
    action.sa_handler = [](int) { g_interrupted = true; };
    action.sa_flags = static_cast<int>(SA_RESETHAND) | SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
}

bool interrupted()
{
    return g_interrupted;
}

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

}   // namespace orvo::os

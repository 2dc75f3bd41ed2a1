#include "os/Program.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace orvo::os {

namespace {

std::atomic<bool> g_interrupted{false};
std::atomic<int> g_exitStatus{0};
static_assert(std::atomic<bool>::is_always_lock_free);   // so that a signal handler may set it
static_assert(std::atomic<int>::is_always_lock_free);

}   // namespace

void setEnvironmentVariable(const std::string& name, const std::string& value)
{
    if (value.empty())
        unsetenv(name.c_str());
    else
        setenv(name.c_str(), value.c_str(), 1);
}

void mendEnvironmentVariable(const std::string& /*name*/) {}

void catchInterrupts(int exitStatus)
{
    g_exitStatus = exitStatus;
    struct sigaction action {};
    action.sa_handler = [](int) {
        if (g_interrupted.exchange(true))
            _exit(g_exitStatus);
    };
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM})
        sigaction(signal, &action, nullptr);
}

bool interrupted()
{
    return g_interrupted;
}

void guardStandardStreams()
{
    signal(SIGPIPE, SIG_IGN);
    // The system gives out the lowest free number. What is written to one that is only read fails.
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(descriptor, F_GETFD) < 0)
            static_cast<void>(open("/dev/null", O_RDONLY));
}

bool standardErrorIsTerminal()
{
    return isatty(STDERR_FILENO) == 1;
}

size_t standardOutputColumns()
{
    winsize size{};
    return ioctl(STDOUT_FILENO, TIOCGWINSZ, &size) == 0 ? size.ws_col : 0;
}

// Terminals here speak UTF-8, and the C library gathers what it writes to them.
Utf8Terminal::Utf8Terminal() = default;
Utf8Terminal::~Utf8Terminal() = default;

void makeStandardOutputBinary() {}

}   // namespace orvo::os

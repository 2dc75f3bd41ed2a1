#include "os/Os.h"

#include <atomic>
#include <csignal>
#include <cstdlib>

#include <dlfcn.h>
#include <unistd.h>

namespace orvo::os {

const char kSeparator = '/';
const char* const kLibraryEnding = ".so";

namespace {

std::atomic<bool> g_interrupted{false};
static_assert(std::atomic<bool>::is_always_lock_free);   // so that a signal handler may set it

}   // namespace

// The system loader always looks beside a library that was linked with $ORIGIN, as ours are.
Module loadLibrary(const std::string& path, Neighbours /*neighbours*/, Error* error)
{
    // An empty path would be the program itself.
    Module module = path.empty() ? nullptr : dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!module && error) {
        const char* text = path.empty() ? "no path" : dlerror();
        *error = {1, text ? text : ""};   // the loader here has texts and no numbers
    }
    return module;
}

void freeLibrary(Module module)
{
    dlclose(module);
}

Symbol findSymbol(Module module, const char* name)
{
    return module ? dlsym(module, name) : nullptr;
}

std::string modulePath(const void* address)
{
    Dl_info info{};
    if (!dladdr(address, &info) || !info.dli_fname)
        return {};
    char* const resolved = realpath(info.dli_fname, nullptr);
    std::string path = resolved ? resolved : info.dli_fname;
    free(resolved);
    return path;
}

std::string environmentVariable(const std::string& name)
{
    const char* value = getenv(name.c_str());
    return value ? value : "";
}

void setEnvironmentVariable(const std::string& name, const std::string& value)
{
    if (value.empty())
        unsetenv(name.c_str());
    else
        setenv(name.c_str(), value.c_str(), 1);
}

uint32_t currentThreadId()
{
    return static_cast<uint32_t>(gettid());
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

#include "os/Os.h"

#include <cstdlib>

#include <dlfcn.h>
#include <unistd.h>

namespace orvo::os {

const char kSeparator = '/';
const char* const kLibraryEnding = ".so";

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

uint32_t currentThreadId()
{
    return static_cast<uint32_t>(gettid());
}

}   // namespace orvo::os

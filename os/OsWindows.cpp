#include "os/Os.h"

#include <array>

#include <windows.h>

namespace orvo::os {

const char kSeparator = '\\';
const char* const kLibraryEnding = ".dll";

namespace {

constexpr DWORD kLongestPath = 32'768;

std::string messageOf(DWORD number)
{
    std::array<char, 1024> buffer{};
    const DWORD length = FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                        number, 0, buffer.data(), static_cast<DWORD>(buffer.size()), nullptr);
    std::string text(buffer.data(), length);
    text.erase(text.find_last_not_of(" \r\n") + 1);
    return text;
}

}   // namespace

Module loadLibrary(const std::string& path, Neighbours neighbours, Error* error)
{
    const DWORD flags = neighbours == Neighbours::BesideTheLibrary ? LOAD_WITH_ALTERED_SEARCH_PATH : 0;
    const HMODULE module = LoadLibraryExA(path.c_str(), nullptr, flags);
    if (!module && error) {
        const DWORD number = GetLastError();
        *error = {number, messageOf(number)};
    }
    return module;
}

void freeLibrary(Module module)
{
    FreeLibrary(static_cast<HMODULE>(module));
}

Symbol findSymbol(Module module, const char* name)
{
    return module ? reinterpret_cast<Symbol>(GetProcAddress(static_cast<HMODULE>(module), name)) : nullptr;
}

std::string modulePath(const void* address)
{
    HMODULE module = nullptr;
    if (!GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<LPCSTR>(address), &module))
        return {};
    std::string path(kLongestPath, '\0');
    path.resize(GetModuleFileNameA(module, path.data(), kLongestPath));
    return path;
}

std::string environmentVariable(const std::string& name)
{
    const DWORD size = GetEnvironmentVariableA(name.c_str(), nullptr, 0);
    std::string value(size, '\0');
    value.resize(size ? GetEnvironmentVariableA(name.c_str(), value.data(), size) : 0);
    return value;
}

uint32_t currentThreadId()
{
    return GetCurrentThreadId();
}

}   // namespace orvo::os

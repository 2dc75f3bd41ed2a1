#include "brdlib/binding/InstallationDirectory.h"

#include <array>
#include <cstring>
#include <optional>
#include <string>

#include "os/InstallationDirectory.h"
#include "templates/platform/SpinLockVariableGuard.h"

namespace orvo::cognex
{

namespace
{

using templates::platform::SpinLockVariable;
using templates::platform::SpinLockVariableGuard;

constexpr size_t kLongestDirectory = 1024;   // with its NUL

std::array<char, kLongestDirectory> g_directory{};
bool g_found = false;
SpinLockVariable g_lock{0};

std::optional<std::string> fromOwnModule()
{
    const std::string path = os::modulePath(&g_found);
    if (path.empty() || path.size() >= kLongestDirectory)
        return std::nullopt;
    return os::installationOf(path, os::kSeparator);
}

std::optional<std::string> fromEnvironment()
{
    for (const char* name : {"ORVODIR5_64", "ORVODIR5"}) {
        const std::string value = os::environmentVariable(name);
        if (!value.empty())
            return value.substr(0, value.find_last_not_of(os::kSeparator) + 1);
    }
    return std::nullopt;
}

}   // namespace

const char* installationDirectory()
{
    const SpinLockVariableGuard guard(g_lock);
    if (!g_found) {
        std::optional<std::string> directory = fromOwnModule();
        if (!directory)
            directory = fromEnvironment();
        if (!directory)
            return nullptr;
        directory->copy(g_directory.data(), g_directory.size() - 1);
        g_found = true;
    }
    return g_directory.data();
}

std::unique_ptr<SharedLibrary> openLibrary(const char* name, const char* directory)
{
    if (!directory)
        directory = installationDirectory();
    if (!directory)
        return nullptr;
    const std::string path =
        std::string(directory) + os::kSeparator + "bin" + os::kSeparator + name + os::kLibraryEnding;
    auto library = std::make_unique<SharedLibrary>(path, SharedLibrary::Unload::Never);
    return library->isLoaded() ? std::move(library) : nullptr;
}

}   // namespace orvo::cognex

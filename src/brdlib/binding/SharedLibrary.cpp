#include "brdlib/binding/SharedLibrary.h"

#include <array>
#include <string>

#include "os/InstallationDirectory.h"
#include "templates/platform/Locks.h"

namespace orvo::cognex {

namespace {

using templates::platform::SpinLockVariable;
using templates::platform::SpinLockVariableGuard;

constexpr size_t kLongestDirectory = 1024;   // with its NUL

SpinLockVariable g_lock{0};
std::array<char, kLongestDirectory> g_directory ORVO_GUARDED_BY(g_lock){};   // does not change once found
bool g_found ORVO_GUARDED_BY(g_lock) = false;

}   // namespace

SharedLibrary::SharedLibrary(const std::string& path, Unload unload)
    : m_module(os::loadLibrary(path, os::Neighbours::AsTheSystemDoes, &m_error)), m_unload(unload)
{}

SharedLibrary::~SharedLibrary()
{
    if (m_module && m_unload == Unload::OnDestruction)
        os::freeLibrary(m_module);
}

const char* installationDirectory()
{
    const SpinLockVariableGuard guard(g_lock);
    if (!g_found) {
        std::string path = os::modulePath(&g_found);
        if (path.size() >= kLongestDirectory)
            path.clear();
        const auto directory = os::installationServing(path);
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

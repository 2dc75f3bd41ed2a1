#include "aikctl/adapter/Adapter.h"

#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "os/InstallationDirectory.h"
#include "os/Os.h"

namespace orvo::aikctl {

namespace {

namespace fs = std::filesystem;

std::string absolutePath(const std::string& path)
{
    return fs::weakly_canonical(fs::absolute(path)).make_preferred().string();
}

/// A library that the system loads together with the adapter, from beside it or from where it looks for any
/// library. It stays loaded, so that the adapter finds it by its name.
void requireNeighbour(const std::string& name, const std::string& adapterPath)
{
    const std::string file = name + os::kLibraryEnding;
    const std::string beside = fs::path(adapterPath).replace_filename(file).string();
    const bool isBeside = fs::is_regular_file(beside);
    os::Error error;
    if (isBeside ? os::loadLibrary(beside, os::Neighbours::BesideTheLibrary, &error) : os::loadLibrary(file))
        return;
    if (!isBeside)
        throw aik::LoadError(file + " is missing, without which the adapter can't be loaded: looked for " +
                             beside + ", and where the system looks");
    throw aik::LoadError(beside + " can't be loaded, nor the adapter without it; perhaps a library that " +
                         "it needs is missing beside it: " + error.text + " (" +
                         std::to_string(error.number) + ")");
}

void requireLibraries(const std::string& adapterPath)
{
    if (!fs::is_regular_file(adapterPath))
        throw aik::LoadError("The adapter is missing: looked for " + adapterPath);

    const std::string library = std::string("brdlib5") + os::kLibraryEnding;
    const auto installation = os::installationServing(adapterPath);
    if (!installation)
        throw aik::LoadError("Don't know where to look for " + library + ": the adapter " + adapterPath +
                             " lies below no folder named bin, dll, Hardware Applets, lib or lib64, and "
                             "neither ORVODIR5_64 nor ORVODIR5 is set");
    const std::string path = *installation + os::kSeparator + "bin" + os::kSeparator + library;
    if (!fs::is_regular_file(path))
        throw aik::LoadError(library + " is missing: looked for " + path +
                             ", below the installation directory of the adapter " + adapterPath);
    for (const char* const neighbour : {"ethlib", "orvo_genicam"})
        requireNeighbour(neighbour, adapterPath);
}

}   // namespace

std::string defaultAdapterPath()
{
    const fs::path program = os::modulePath(reinterpret_cast<const void*>(&absolutePath));
    return (program.parent_path() / "OrvoCognexAdapter").string() + os::kLibraryEnding;
}

aik::Adapter loadAdapter(const std::string& path)
{
    const std::string whole = absolutePath(path);
    requireLibraries(whole);
    return aik::Adapter(whole);
}

std::runtime_error noSuchChannel(int32_t index, size_t channels)
{
    if (channels == 0)
        return std::runtime_error("There is no channel: the adapter found no board");
    return std::runtime_error("There is no channel " + std::to_string(index) + ": the last one is " +
                              std::to_string(channels - 1));
}

std::string explained(const std::string& failure)
{
    const std::string_view prefix = "ORVO_COGNEX_APPLET_";
    const size_t begin = failure.find(prefix);
    if (begin == std::string::npos)
        return failure;
    const std::string value = os::environmentVariable(failure.substr(begin, prefix.size() + 1));
    return value.empty() ? failure : failure + " It is set to: " + value;
}

}   // namespace orvo::aikctl

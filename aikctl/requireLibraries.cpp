#include "aikctl/requireLibraries.h"

#include <filesystem>
#include <stdexcept>

#include "os/InstallationDirectory.h"
#include "os/Os.h"

namespace orvo::aikctl {

namespace {

namespace fs = std::filesystem;

/// One that the system loads together with the adapter: beside it, or where it looks for all libraries. It
/// stays loaded: the adapter then finds it by its name, in whatever folders the system looks for that.
void requireNeighbour(const std::string& name, const std::string& adapterPath)
{
    const std::string file = name + os::kLibraryEnding;
    const std::string beside = fs::path(adapterPath).replace_filename(file).string();
    const bool isBeside = fs::is_regular_file(beside);
    os::Error error;
    if (isBeside ? os::loadLibrary(beside, os::Neighbours::BesideTheLibrary, &error) : os::loadLibrary(file))
        return;
    if (!isBeside)
        throw std::runtime_error(file +
                                 " is missing, without which the adapter can't be loaded: looked for " +
                                 beside + ", and where the system looks");
    throw std::runtime_error(
        beside + " can't be loaded, nor the adapter without it; perhaps a library that " +
        "it needs is missing beside it: " + error.text + " (" + std::to_string(error.number) + ")");
}

}   // namespace

void requireLibraries(const std::string& adapterPath)
{
    if (!fs::is_regular_file(adapterPath))
        throw std::runtime_error("The adapter is missing: looked for " + adapterPath);

    const std::string library = std::string("brdlib5") + os::kLibraryEnding;
    const auto installation = os::installationServing(adapterPath);
    if (!installation)
        throw std::runtime_error("Don't know where to look for " + library + ": the adapter " + adapterPath +
                                 " lies below no folder named bin, dll, Hardware Applets, lib or lib64, and "
                                 "neither ORVODIR5_64 nor ORVODIR5 is set");
    const std::string path = *installation + os::kSeparator + "bin" + os::kSeparator + library;
    if (!fs::is_regular_file(path))
        throw std::runtime_error(library + " is missing: looked for " + path +
                                 ", below the installation directory of the adapter " + adapterPath);
    for (const char* const neighbour : {"ethlib", "orvo_genicam"})
        requireNeighbour(neighbour, adapterPath);
}

}   // namespace orvo::aikctl

#include "aikctl/adapter/Adapter.h"

#include <filesystem>
#include <stdexcept>
#include <string_view>

#include "os/InstallationDirectory.h"
#include "os/Os.h"
#include "os/PathText.h"
#include "os/Program.h"

namespace orvo::aikctl {

namespace {

namespace fs = std::filesystem;

std::string absolutePath(const std::string& path)
{
    return os::textOf(fs::weakly_canonical(fs::absolute(os::pathOf(path))).make_preferred());
}

/// A library that the system loads together with the adapter, from beside it or from where it looks for any
/// library. It stays loaded, so that the adapter finds it by its name.
void requireNeighbour(const std::string& name, const std::string& adapterPath)
{
    const std::string file = name + os::kLibraryEnding;
    const std::string beside = os::textOf(os::pathOf(adapterPath).replace_filename(file));
    const bool isBeside = fs::is_regular_file(os::pathOf(beside));
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

/// What the adapter reads. It asks for bytes, in the code page of the process.
constexpr const char* kVariables[] = {"ORVODIR5_64",          "ORVODIR5",
                                      "ORVO_COGNEX_APPLET_0", "ORVO_COGNEX_APPLET_1",
                                      "ORVO_COGNEX_APPLET_2", "ORVO_COGNEX_APPLET_3",
                                      "ORVO_COGNEX_APPLET_4", "ORVO_COGNEX_APPLET_5",
                                      "ORVO_COGNEX_APPLET_6", "ORVO_COGNEX_APPLET_7"};

void requireLibraries(const std::string& adapterPath)
{
    if (!fs::is_regular_file(os::pathOf(adapterPath)))
        throw aik::LoadError("The adapter is missing: looked for " + adapterPath);

    const std::string library = std::string("brdlib5") + os::kLibraryEnding;
    const auto installation = os::installationServing(adapterPath);
    if (!installation)
        throw aik::LoadError("Don't know where to look for " + library + ": the adapter " + adapterPath +
                             " lies below no folder named bin, dll, Hardware Applets, lib or lib64, and "
                             "neither ORVODIR5_64 nor ORVODIR5 is set");
    const std::string path = *installation + os::kSeparator + "bin" + os::kSeparator + library;
    if (!fs::is_regular_file(os::pathOf(path)))
        throw aik::LoadError(library + " is missing: looked for " + path +
                             ", below the installation directory of the adapter " + adapterPath);
    for (const char* const neighbour : {"ethlib", "orvo_genicam"})
        requireNeighbour(neighbour, adapterPath);
}

}   // namespace

std::string defaultAdapterPath()
{
    const fs::path program = os::pathOf(os::modulePath(reinterpret_cast<const void*>(&absolutePath)));
    return os::textOf(program.parent_path() / "OrvoCognexAdapter") + os::kLibraryEnding;
}

aik::Adapter loadAdapter(const std::string& path)
{
    for (const char* const variable : kVariables)
        os::mendEnvironmentVariable(variable);
    const std::string whole = absolutePath(path);
    requireLibraries(whole);
    return aik::Adapter(os::pathOf(whole));
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

#include "aikctl/requireLibraries.h"

#include <filesystem>
#include <stdexcept>

#include "os/InstallationDirectory.h"
#include "os/Os.h"

namespace orvo::aikctl {

void requireLibraries(const std::string& adapterPath)
{
    namespace fs = std::filesystem;
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
}

}   // namespace orvo::aikctl

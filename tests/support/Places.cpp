#include "tests/support/Places.h"

#include <filesystem>

#include "os/Os.h"

namespace orvo::test {

namespace {

using std::filesystem::path;

path ourFolder()
{
    return path(os::modulePath(reinterpret_cast<const void*>(&libraryBesideUs))).parent_path();
}

}   // namespace

std::string libraryBesideUs(const std::string& name)
{
    return (ourFolder() / (name + os::kLibraryEnding)).string();
}

std::string oldInstallation()
{
    return pathInBuild("tests/old");
}

std::string libraryOfOldInstallation(const std::string& name)
{
    return (path(oldInstallation()) / "bin" / (name + os::kLibraryEnding)).string();
}

std::string pathInBuild(const std::string& path)
{
    return (ourFolder().parent_path().parent_path() / path).string();
}

}   // namespace orvo::test

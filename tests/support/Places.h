#pragma once

#include <string>

namespace orvo::test {

/// The path of the library called `name` beside this program.
std::string libraryBesideUs(const std::string& name);

/// A place in the folder that the project is built in.
std::string pathInBuild(const std::string& path);

/// The folder of an installation whose libraries are old: they load and export next to nothing.
std::string oldInstallation();
std::string libraryOfOldInstallation(const std::string& name);

}   // namespace orvo::test

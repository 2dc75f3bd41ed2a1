#pragma once

#include <filesystem>
#include <string>

/// Paths as text. What a process is given, and what it hands to others, are bytes in its code page. On Windows
/// std::filesystem does not know that page: a path made of such text names another file, and string() is always
/// UTF-8. Callable on any thread.
namespace orvo::os {

/// The path that these bytes name in the process's code page; on Linux any bytes do.
std::filesystem::path pathOf(const std::string& text);

/// The path in the process's code page. What that page can't show becomes what the system puts in its place.
std::string textOf(const std::filesystem::path& path);

/// The path that an environment variable holds; empty if it isn't set.
std::filesystem::path pathVariable(const std::string& name);

}   // namespace orvo::os

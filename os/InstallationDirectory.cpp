#include "os/InstallationDirectory.h"

#include <algorithm>
#include <array>
#include <cctype>

#include "os/Os.h"

namespace orvo::os {

namespace {

constexpr std::array<std::string_view, 5> kLibraryFolders = {"bin", "dll", "Hardware Applets", "lib",
                                                             "lib64"};

bool equalIgnoringCase(std::string_view a, std::string_view b)
{
    const auto lower = [](char c) { return std::tolower(static_cast<unsigned char>(c)); };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lower(x) == lower(y); });
}

std::string_view withoutTrailing(std::string_view path, char separator)
{
    return path.substr(0, path.find_last_not_of(separator) + 1);
}

}   // namespace

std::optional<std::string> installationOf(std::string_view modulePath, char separator)
{
    // A separator at the very start counts as the beginning of the path, not as a folder to go up to.
    for (size_t end = modulePath.rfind(separator); end != std::string_view::npos && end > 0;) {
        const std::string_view folder = withoutTrailing(modulePath.substr(0, end), separator);
        end = folder.rfind(separator);
        if (end == std::string_view::npos || end == 0)
            break;
        const std::string_view name = folder.substr(end + 1);
        if (std::any_of(kLibraryFolders.begin(), kLibraryFolders.end(),
                        [&](std::string_view known) { return equalIgnoringCase(name, known); }))
            return std::string(withoutTrailing(folder.substr(0, end), separator));
    }
    return std::nullopt;
}

std::optional<std::string> installationServing(std::string_view modulePath)
{
    if (auto installation = installationOf(modulePath, kSeparator))
        return installation;
    for (const char* variable : {"ORVODIR5_64", "ORVODIR5"}) {
        const std::string value = environmentVariable(variable);
        if (!value.empty())
            return std::string(withoutTrailing(value, kSeparator));
    }
    return std::nullopt;
}

}   // namespace orvo::os

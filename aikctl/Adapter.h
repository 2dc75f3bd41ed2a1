#pragma once

#include <optional>
#include <string>
#include <vector>

#include "aikctl/Channel.h"
#include "aikctl/Exports.h"

namespace orvo::aikctl {

/// A loaded adapter. It stays loaded until the process ends. Outlives the channels that it opens.
class Adapter {
public:
    /// Where the adapter is looked for if nobody says otherwise: beside this program.
    static std::string defaultPath();

    /// Throws runtime_error that says which file is missing, and where it was looked for.
    explicit Adapter(const std::string& path);
    Adapter(const Adapter&) = delete;
    Adapter& operator=(const Adapter&) = delete;

    const std::string& path() const { return m_path; }

    /// Opens every channel there is, failed ones too, in the adapter's order: all of them, since the release
    /// of the only open channel shuts everything down. Throws AdapterFailure; nothing is then left open.
    std::vector<Channel> openAll() const;
    /// Opens one channel alone, whose release then shuts everything down. Throws AdapterFailure, and
    /// runtime_error if there is no such channel or it can't be used; nothing is then left open.
    Channel open(int32_t index) const;

private:
    /// The channel at that position; none behind the last one. Throws AdapterFailure.
    std::optional<Channel> tryToOpen(int32_t index) const;
    void shutDown() const;

    std::string m_path;   // absolute
    Exports m_exports;
};

}   // namespace orvo::aikctl

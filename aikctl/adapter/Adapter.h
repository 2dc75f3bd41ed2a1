#pragma once

#include <optional>
#include <string>
#include <vector>

#include "aikctl/adapter/Channel.h"
#include "aikctl/adapter/Exports.h"

namespace orvo::aikctl {

/// A loaded adapter. It stays loaded until the process ends. Outlives the channels that it opens.
class Adapter {
public:
    /// Where the adapter is looked for by default: beside this program.
    static std::string defaultPath();

    /// Checks first that the libraries which the adapter needs are there: without the board library its first
    /// call would end the process, and without a camera library the system refuses to load it and doesn't
    /// name what is missing. Throws runtime_error that names the missing file and where it was looked for.
    explicit Adapter(const std::string& path);
    Adapter(const Adapter&) = delete;
    Adapter& operator=(const Adapter&) = delete;

    const std::string& path() const { return m_path; }

    /// Opens every channel, failed ones too, in the adapter's order. All of them, because releasing the only
    /// open channel shuts everything down. Throws AdapterFailure; nothing is then left open.
    std::vector<Channel> openAll() const;
    /// Opens a single channel; its release shuts everything down. Throws AdapterFailure, and runtime_error if
    /// there is no such channel or it has failed; nothing is then left open.
    Channel open(int32_t index) const;

private:
    /// The channel at that position; none after the last one. Throws AdapterFailure.
    std::optional<Channel> tryToOpen(int32_t index) const;
    void shutDown() const;

    std::string m_path;   // absolute
    Exports m_exports;
};

}   // namespace orvo::aikctl

#pragma once

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <utility>

#include "aikctl/grab/PictureQueue.h"

namespace orvo::aikctl {

/// A table of the saved pictures, as a file of comma-separated values with a line of titles.
/// Threads: add() on any.
class PictureIndex {
public:
    explicit PictureIndex(std::filesystem::path path) : m_path(std::move(path)) {}

    /// Makes the file. Before the first add(). Throws runtime_error if it can't be written.
    void open();

    /// `file`: the name of the picture's. Throws runtime_error.
    void add(const std::string& file, const QueuedPicture& queued);

private:
    void flush();

    const std::filesystem::path m_path;
    std::mutex m_mutex;
    std::ofstream m_file;
    std::string m_failure;   // the first one: the stream takes nothing after it
};

}   // namespace orvo::aikctl

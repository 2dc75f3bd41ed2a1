#pragma once

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>

#include "aikctl/grab/PictureQueue.h"

namespace orvo::aikctl {

/// A table of the saved pictures, as a file of comma-separated values with a line of titles.
/// Threads: add() on any.
class PictureIndex {
public:
    /// Throws runtime_error if the file can't be written.
    explicit PictureIndex(const std::filesystem::path& path);

    /// `file`: the name of the picture's. Throws runtime_error.
    void add(const std::string& file, const QueuedPicture& picture);

private:
    const std::filesystem::path m_path;
    std::mutex m_mutex;
    std::ofstream m_file;
};

}   // namespace orvo::aikctl

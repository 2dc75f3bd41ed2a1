#pragma once

#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace orvo::aikctl {

/// The folder that pictures are saved in: a file each, named after channel and picture (channel0-000001.png).
/// Threads: save() on any.
class PictureFolder {
public:
    /// Makes the folder. Throws runtime_error if that fails, or if it holds pictures of an earlier grab and
    /// `overwrite` is false.
    PictureFolder(const std::string& path, bool overwrite);

    const std::filesystem::path& path() const { return m_path; }

    /// Writes a file completely or not at all, and returns its name without the folder. `number` counts from 1.
    /// Throws runtime_error.
    std::string save(int32_t channel, uint64_t number, const std::string& ending,
                     std::span<const uint8_t> content) const;

private:
    std::filesystem::path m_path;
};

}   // namespace orvo::aikctl

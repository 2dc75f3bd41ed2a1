#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "os/FileLock.h"

namespace orvo::aikctl {

/// The first line of the table of the pictures. It tells our tables from other programs' files of that name.
inline constexpr const char* kIndexTitles = "file,channel,number,timestamp,hostTime,width,height,format";

/// The folder that pictures are saved in: a file each, named after channel and picture (channel0-000001.png).
/// One at a time can use a folder; other programs' files in it are left alone.
/// Threads: save() on any, several at a time.
class PictureFolder {
public:
    /// Makes the folder. Pictures of an earlier grab are refused unless `overwrite` says that begin() removes
    /// them. Throws runtime_error for that and for a folder that can't be used.
    PictureFolder(const std::string& path, bool overwrite);
    PictureFolder(const PictureFolder&) = delete;
    PictureFolder& operator=(const PictureFolder&) = delete;
    /// Removes what the constructor made if begin() was never called, and nobody put anything into it.
    ~PictureFolder();

    const std::filesystem::path& path() const { return m_path; }
    /// The file for the table of the pictures. Throws runtime_error if another program's file has its name.
    std::filesystem::path indexPath() const;

    /// Removes the pictures of an earlier grab, and their table. Before the first save(). Throws runtime_error.
    void begin();

    /// Writes a file completely or not at all, and returns its name without the folder. `number` counts from 1,
    /// and no other call for this channel has the same. Throws runtime_error.
    std::string save(int32_t channel, uint64_t number, const std::string& ending,
                     std::span<const uint8_t> content) const;

private:
    std::filesystem::path m_path;
    std::vector<std::filesystem::path> m_made;   // by the constructor, the innermost folder first
    std::optional<os::FileLock> m_lock;          // always there once constructed
};

}   // namespace orvo::aikctl

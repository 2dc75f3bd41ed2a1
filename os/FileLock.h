#pragma once

#include <cstdint>
#include <filesystem>

namespace orvo::os {

/// A file that one holder at a time can have, in this process or another. The system lets go of it when a process
/// ends, however that happens; what is then left of the file locks nobody out.
class FileLock {
public:
    /// Makes the file, and holds it unless somebody else does. Throws std::system_error if that can't be tried,
    /// for one because the folder can't be written.
    explicit FileLock(const std::filesystem::path& path);
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;
    /// Removes the file if it is held here.
    ~FileLock();

    bool isHeld() const { return m_isHeld; }

private:
    std::filesystem::path m_path;
    intptr_t m_handle = -1;   // the system's, of the open file
    bool m_isHeld = false;
};

}   // namespace orvo::os

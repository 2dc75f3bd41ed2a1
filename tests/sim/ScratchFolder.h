#pragma once

#include <string>
#include <string_view>

namespace orvo::test {

/// A folder of one test's own, gone with the object.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::string& path() const { return m_path; }
    std::string path(std::string_view name) const;
    /// Writes a file, in folders that it makes as needed, and returns its path.
    std::string write(std::string_view name, std::string_view content) const;
    std::string read(std::string_view name) const;

private:
    std::string m_path;
};

}   // namespace orvo::test

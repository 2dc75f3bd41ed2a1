#include "tests/sim/ScratchFolder.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

namespace orvo::test {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder()
    : m_path((fs::temp_directory_path() / ("orvo-sim-" + std::to_string(std::random_device{}()))).string())
{
    fs::create_directories(m_path);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    fs::remove_all(m_path, ignored);
}

std::string ScratchFolder::path(std::string_view name) const
{
    return (fs::path(m_path) / name).string();
}

std::string ScratchFolder::write(std::string_view name, std::string_view content) const
{
    fs::create_directories(fs::path(path(name)).parent_path());
    std::ofstream(path(name), std::ios::binary) << content;
    return path(name);
}

std::string ScratchFolder::read(std::string_view name) const
{
    std::ostringstream content;
    content << std::ifstream(path(name), std::ios::binary).rdbuf();
    return content.str();
}

}   // namespace orvo::test

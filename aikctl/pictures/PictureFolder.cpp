#include "aikctl/pictures/PictureFolder.h"

#include <cerrno>
#include <fstream>
#include <iomanip>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace orvo::aikctl {

namespace fs = std::filesystem;

namespace {

void refuseOlderPictures(const fs::path& folder)
{
    const std::regex ours(R"(channel\d+-\d+\.(png|raw))");
    for (const auto& entry : fs::directory_iterator(folder))
        if (std::regex_match(entry.path().filename().string(), ours))
            throw std::runtime_error(entry.path().string() +
                                     " is there from an earlier grab; name another folder, or --overwrite");
}

std::error_code writeFile(const fs::path& part, const fs::path& whole, std::span<const uint8_t> content)
{
    errno = 0;
    std::ofstream file(part, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
    file.close();
    if (!file)
        return {errno == 0 ? EIO : errno, std::generic_category()};
    std::error_code failure;
    fs::rename(part, whole, failure);
    return failure;
}

}   // namespace

PictureFolder::PictureFolder(const std::string& path, bool overwrite)
    : m_path(fs::absolute(path).lexically_normal())
{
    try {
        fs::create_directories(m_path);
        if (!overwrite)
            refuseOlderPictures(m_path);
    } catch (const fs::filesystem_error& failure) {
        throw std::runtime_error("Can't use the folder " + m_path.string() + ": " + failure.code().message());
    }
}

std::string PictureFolder::save(int32_t channel, uint64_t number, const std::string& ending,
                                std::span<const uint8_t> content) const
{
    std::ostringstream name;
    name << "channel" << channel << '-' << std::setw(6) << std::setfill('0') << number << '.' << ending;
    const fs::path whole = m_path / name.str();
    const fs::path part = whole.string() + ".part";
    const std::error_code failure = writeFile(part, whole, content);
    if (!failure)
        return name.str();
    std::error_code ignored;
    fs::remove(part, ignored);
    throw std::runtime_error("Can't write " + whole.string() + ": " + failure.message());
}

}   // namespace orvo::aikctl

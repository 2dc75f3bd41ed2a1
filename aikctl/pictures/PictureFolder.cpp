#include "aikctl/pictures/PictureFolder.h"

#include <cerrno>
#include <fstream>
#include <iomanip>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <string_view>
#include <system_error>

#include "os/PathText.h"

namespace orvo::aikctl {

namespace fs = std::filesystem;

namespace {

constexpr const char* kLockFile = "aikctl.lock";
constexpr const char* kIndexFile = "index.csv";

bool isIndex(const fs::path& path)
{
    std::ifstream file(path);
    std::string begin(std::string_view(kIndexTitles).size(), '\0');
    return file.read(begin.data(), static_cast<std::streamsize>(begin.size())) && begin == kIndexTitles;
}

bool isOurs(const fs::path& path)
{
    static const std::regex ours(R"(channel\d+-\d{6,}\.(png|pgm|ppm|tiff|raw)(\.part)?)");
    const fs::path name = path.filename();
    return name == kIndexFile ? isIndex(path) : std::regex_match(os::textOf(name), ours);
}

void refuseOlderPictures(const fs::path& folder)
{
    for (const auto& entry : fs::directory_iterator(folder))
        if (isOurs(entry.path()))
            throw std::runtime_error(os::textOf(entry.path()) +
                                     " is there from an earlier grab; name another folder, or --overwrite");
}

/// The folders from this one upwards that are not there yet.
std::vector<fs::path> missingFolders(fs::path folder)
{
    std::vector<fs::path> missing;
    for (; !fs::exists(folder); folder = folder.parent_path())
        missing.push_back(folder);
    return missing;
}

std::runtime_error unusable(const fs::path& folder, const std::error_code& reason)
{
    return std::runtime_error("Can't use the folder " + os::textOf(folder) + ": " + reason.message());
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

PictureFolder::PictureFolder(const std::string& path, bool overwrite) : m_path(fs::absolute(os::pathOf(path)))
{
    if (os::textOf(m_path).starts_with(R"(\\.\)"))   // as Windows has it for names such as NUL
        throw std::runtime_error("Can't use the folder " + path + ": it is a device");
    m_path = m_path.lexically_normal();
    if (!fs::exists(m_path.root_path()))
        throw std::runtime_error("Can't use the folder " + path + ": there is no " +
                                 os::textOf(m_path.root_path()));
    try {
        m_made = missingFolders(m_path);
        fs::create_directories(m_path);
        m_lock.emplace(m_path / kLockFile);
        if (m_lock->isHeld() && !overwrite)
            refuseOlderPictures(m_path);
    } catch (const std::system_error& failure) {
        throw unusable(m_path, failure.code());
    }
    if (!m_lock->isHeld())
        throw std::runtime_error("Another grab saves pictures in " + os::textOf(m_path));
}

PictureFolder::~PictureFolder()
{
    m_lock.reset();
    std::error_code ignored;   // a folder that somebody else uses by now stays
    for (const fs::path& folder : m_made)
        fs::remove(folder, ignored);
}

fs::path PictureFolder::indexPath() const
{
    fs::path path = m_path / kIndexFile;
    std::error_code ignored;
    if (fs::exists(path, ignored) && !fs::is_empty(path, ignored) && !isIndex(path))
        throw std::runtime_error(os::textOf(path) + " is no table of pictures; name another folder");
    return path;
}

void PictureFolder::begin()
{
    m_made.clear();
    try {
        for (const auto& entry : fs::directory_iterator(m_path))
            if (entry.is_regular_file() && isOurs(entry.path()))
                fs::remove(entry);
    } catch (const std::system_error& failure) {
        throw unusable(m_path, failure.code());
    }
}

std::string PictureFolder::save(int32_t channel, uint64_t number, const std::string& ending,
                                std::span<const uint8_t> content) const
{
    std::ostringstream name;
    name << "channel" << channel << '-' << std::setw(6) << std::setfill('0') << number << '.' << ending;
    const fs::path whole = m_path / name.str();
    fs::path part = whole;
    part += ".part";
    const std::error_code failure = writeFile(part, whole, content);
    if (!failure)
        return name.str();
    std::error_code ignored;
    fs::remove(part, ignored);
    throw std::runtime_error("Can't write " + os::textOf(whole) + ": " + failure.message());
}

}   // namespace orvo::aikctl

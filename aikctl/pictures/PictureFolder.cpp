#include "aikctl/pictures/PictureFolder.h"

#include <cerrno>
#include <fstream>
#include <iomanip>
#include <regex>
#include <sstream>
#include <stdexcept>
#include <system_error>

#include "os/PathText.h"

namespace orvo::aikctl {

namespace fs = std::filesystem;

namespace {

constexpr const char* kLockFile = "aikctl.lock";

bool isOurs(const fs::path& name)
{
    static const std::regex ours(R"(channel\d+-\d{6,}\.(png|pgm|ppm|tiff|raw)(\.part)?)");
    return std::regex_match(os::textOf(name), ours);
}

void clear(const fs::path& folder, bool overwrite)
{
    for (const auto& entry : fs::directory_iterator(folder)) {
        if (!isOurs(entry.path().filename()))
            continue;
        if (!overwrite)
            throw std::runtime_error(os::textOf(entry.path()) +
                                     " is there from an earlier grab; name another folder, or --overwrite");
        if (entry.is_regular_file())
            fs::remove(entry);
    }
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
        fs::create_directories(m_path);
        m_lock.emplace(m_path / kLockFile);
        if (m_lock->isHeld())
            clear(m_path, overwrite);
    } catch (const std::system_error& failure) {
        throw std::runtime_error("Can't use the folder " + os::textOf(m_path) + ": " +
                                 failure.code().message());
    }
    if (!m_lock->isHeld())
        throw std::runtime_error("Another grab saves pictures in " + os::textOf(m_path));
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

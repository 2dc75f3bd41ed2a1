#include "aikctl/grab/PictureIndex.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <system_error>

#include "aikctl/grab/PictureSaver.h"
#include "aikctl/pictures/PixelFormat.h"
#include "os/PathText.h"

namespace orvo::aikctl {

namespace {

/// In UTC, such as 2026-05-04T09:30:00.123456Z.
std::string timeText(std::chrono::system_clock::time_point time)
{
    const auto whole = std::chrono::floor<std::chrono::seconds>(time);
    const auto day = std::chrono::floor<std::chrono::days>(whole);
    const std::chrono::year_month_day date(day);
    const std::chrono::hh_mm_ss clock(whole - day);
    const auto micros = std::chrono::duration_cast<std::chrono::microseconds>(time - whole).count();
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02u-%02uT%02d:%02d:%02d.%06dZ",
                  static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                  static_cast<unsigned>(date.day()), static_cast<int>(clock.hours().count()),
                  static_cast<int>(clock.minutes().count()), static_cast<int>(clock.seconds().count()),
                  static_cast<int>(micros));
    return text.data();
}

}   // namespace

PictureIndex::PictureIndex(const std::filesystem::path& path) : m_path(path)
{
    errno = 0;
    m_file.open(path, std::ios::trunc);
    m_file << "file,channel,number,timestamp,hostTime,width,height,format\n" << std::flush;
    if (!m_file)
        throw std::runtime_error("Can't write " + os::textOf(path) + ": " +
                                 std::generic_category().message(errno == 0 ? EIO : errno));
}

void PictureIndex::add(const std::string& file, const QueuedPicture& queued)
{
    const aik::Picture& picture = queued.picture;
    const std::lock_guard lock(m_mutex);
    m_file << file << ',' << queued.saved->channel << ',' << queued.number << ','
           << (picture.timestamp ? std::to_string(*picture.timestamp) : "") << ','
           << timeText(queued.fetchedAt) << ',' << picture.width << ',' << picture.height << ",\""
           << describePixelFormat(picture.format, picture.bytesPerPixel, picture.isPlanar) << "\"\n";
    if (!m_file)
        throw std::runtime_error("Can't write " + os::textOf(m_path));
}

}   // namespace orvo::aikctl

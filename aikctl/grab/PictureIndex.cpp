#include "aikctl/grab/PictureIndex.h"

#include <array>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <stdexcept>
#include <system_error>

#include "aikctl/grab/PictureSaver.h"
#include "aikctl/pictures/PictureFolder.h"
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

void PictureIndex::open()
{
    errno = 0;
    m_file.open(m_path, std::ios::trunc);
    m_file << kIndexTitles << '\n';
    flush();
}

/// After each line, so that a full disk is noticed with the picture that it concerns.
void PictureIndex::flush()
{
    m_file.flush();
    if (m_file)
        return;
    if (m_failure.empty())
        m_failure = "Can't write " + os::textOf(m_path) + ": " +
                    std::generic_category().message(errno == 0 ? EIO : errno);
    throw std::runtime_error(m_failure);
}

void PictureIndex::add(const std::string& file, const QueuedPicture& queued)
{
    const aik::Picture& picture = queued.picture;
    const std::lock_guard lock(m_mutex);
    errno = 0;
    m_file << file << ',' << queued.saved->channel << ',' << queued.number << ','
           << (picture.timestamp ? std::to_string(*picture.timestamp) : "") << ','
           << timeText(queued.fetchedAt) << ',' << picture.width << ',' << picture.height << ",\""
           << describePixelFormat(picture.format, picture.bytesPerPixel, picture.isPlanar) << "\"\n";
    flush();
}

}   // namespace orvo::aikctl

#include "aikctl/grab/ChannelGrab.h"

#include <charconv>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "aikctl/pictures/PixelFormat.h"

namespace orvo::aikctl {

namespace {

constexpr std::string_view kNotRunning = "Acquisition is not running";
constexpr std::string_view kOverflow = " images lost due buffer overflow";

uint64_t leadingNumber(std::string_view text)
{
    uint64_t number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

// How many pictures the board lost for want of a buffer, if the failure says so. The frame counter doesn't
// include them.
uint64_t lostByOverflow(std::string_view failure)
{
    return failure.ends_with(kOverflow) ? leadingNumber(failure) : 0;
}

}   // namespace

ChannelGrab::ChannelGrab(aik::Channel& channel, GrabOptions options, const PictureFolder& folder)
    : m_channel(channel), m_options(std::move(options)), m_folder(folder)
{
    m_result.failure = channel.failure();
}

ChannelGrab::~ChannelGrab()
{
    askToEnd();
    join();
}

void ChannelGrab::prepare()
{
    if (!m_result.failure.empty())
        return;
    try {
        if (!m_options.strategy.empty())
            m_channel.write("AcquisitionStrategy", m_options.strategy);
        if (m_options.isPlanar)
            m_channel.write("Transformation", "RGB8PackedToPlanar");
        m_channel.setup();
    } catch (const std::bad_alloc&) {
        fail("setup", "There is no memory for a picture of " + std::to_string(m_channel.width()) + " x " +
                          std::to_string(m_channel.height()));
    } catch (const std::exception& failure) {
        fail("setup", failure.what());
    }
}

void ChannelGrab::start()
{
    if (!m_result.failure.empty())
        return;
    try {
        m_channel.start();
        m_isRunning = true;
    } catch (const aik::Error& failure) {
        fail("start", failure.what());
    }
}

void ChannelGrab::fetch(std::function<void()> onNews)
{
    if (m_result.failure.empty()) {
        try {
            m_thread = std::thread([this, onNews = std::move(onNews)] {
                fetchAll(onNews);
                m_isDone = true;
                onNews();
            });
            return;
        } catch (const std::exception& failure) {
            fail("fetch", failure.what());
        }
    }
    m_isDone = true;
}

void ChannelGrab::join()
{
    if (m_thread.joinable())
        m_thread.join();
}

void ChannelGrab::stop()
{
    if (!m_isRunning)
        return;
    try {
        m_channel.stop();
    } catch (const aik::Error& failure) {
        // Stopping another channel of the same applet process has stopped this one, too. Nothing tells
        // beforehand which channels share a process.
        if (failure.what() != kNotRunning)
            fail("stop", failure.what());
    }
}

void ChannelGrab::fetchAll(const std::function<void()>& onNews)
{
    const auto timeout = std::chrono::duration_cast<Clock::duration>(m_options.timeout);
    const auto timestamp = m_options.isTimed ? aik::Timestamp::Wanted : aik::Timestamp::NotWanted;
    try {
        auto deadline = Clock::now() + timeout;
        while (m_fetched < m_options.count && !m_isAskedToEnd) {
            if (const auto picture = m_channel.grab(timestamp)) {
                take(*picture);
                onNews();
                deadline = Clock::now() + timeout;   // the time that saving took is not waiting time
            } else if (Clock::now() >= deadline) {
                throw std::runtime_error("No picture came in time");
            }
        }
        saveWaiting();
    } catch (const std::exception& failure) {
        fail(m_step, failure.what());
    }
    if (m_fetched < m_options.count)
        account();
}

void ChannelGrab::take(const aik::Picture& picture)
{
    const auto now = Clock::now();
    m_last = picture;
    if (picture.timestamp)
        m_result.timestamps.push_back(*picture.timestamp);
    if (++m_fetched == 1)
        m_firstTime = now;
    const std::chrono::duration<double> sinceFirst = now - m_firstTime;
    if (sinceFirst.count() > 0)
        m_result.picturesPerSecond = static_cast<double>(m_fetched - 1) / sinceFirst.count();
    if (m_fetched == m_options.count)
        account();   // now, since more pictures come while the last one is saved

    if (!picture.format) {
        m_waiting.emplace_back(picture.bytes.begin(), picture.bytes.end());
        return;
    }
    saveWaiting();
    save(picture.bytes);
}

void ChannelGrab::saveWaiting()
{
    for (const auto& image : m_waiting)
        save(image);
    m_waiting.clear();
}

void ChannelGrab::save(Image image)
{
    m_step = "save";
    aik::Picture picture = m_last;
    picture.bytes = {image.data(), image.size()};
    encode(picture, m_options.encoding, m_file);
    if (m_result.pictures == 0) {
        m_result.format = describePixelFormat(picture.format, picture.bytesPerPixel, picture.isPlanar);
        m_result.note = m_file.note;
    }
    const uint64_t number = m_result.pictures + 1;
    m_folder.save(m_channel.index(), number, m_file.ending, m_file.bytes);
    m_result.pictures = number;
    m_step = "fetch";
}

void ChannelGrab::account()
{
    try {
        const uint64_t counted = leadingNumber(m_channel.read("FrameCountSinceLastStart"));
        if (counted > m_fetched)
            m_result.lost = counted - m_fetched;
    } catch (const aik::Error& failure) {
        fail("frame count", failure.what());
    }
    m_result.lost += lostByOverflow(m_result.failure);
}

void ChannelGrab::fail(const char* step, const std::string& text)
{
    if (!m_result.failure.empty())
        return;
    m_result.failure = text;
    m_result.failedStep = step;
}

}   // namespace orvo::aikctl

#include "aikctl/grab/ChannelGrab.h"

#include <algorithm>
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

// 0 if the board doesn't tell.
uint64_t tickFrequency(const aik::Channel& channel)
{
    try {
        return channel.read<uint64_t>("TimestampFrequency");
    } catch (const std::runtime_error&) {
        return 0;
    }
}

// How many pictures the board lost for want of a buffer, if the failure says so.
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
        m_result.record.strategy = m_channel.read("AcquisitionStrategy");
        m_result.record.buffers = m_channel.read<uint64_t>("BufferCount");
        m_result.record.ticksPerSecond = tickFrequency(m_channel);
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
    try {
        auto deadline = Clock::now() + timeout;
        while (m_fetched < m_options.count && !m_isAskedToEnd) {
            if (const auto picture = next()) {
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
        m_result.record.countedAtLast = readCounter();
}

/// Looks at the frame counter when the first picture has come, before it is fetched: more come meanwhile.
std::optional<aik::Picture> ChannelGrab::next()
{
    if (m_result.record.countedAtFirst == 0) {
        if (!m_channel.wait())
            return std::nullopt;
        m_result.record.countedAtFirst = readCounter();
    }
    return m_channel.grab();
}

void ChannelGrab::take(const aik::Picture& picture)
{
    const auto now = Clock::now();
    m_last = picture;
    GrabRecord& record = m_result.record;
    record.fetched = ++m_fetched;
    if (picture.timestamp)
        record.addTimestamp(record.fetched, *picture.timestamp);
    if (m_fetched == 1)
        m_firstTime = now;
    const std::chrono::duration<double> sinceFirst = now - m_firstTime;
    if (sinceFirst.count() > 0)
        m_result.picturesPerSecond = static_cast<double>(m_fetched - 1) / sinceFirst.count();
    if (m_fetched == m_options.count)
        record.countedAtLast = readCounter();   // now: more pictures come while the last one is saved

    if (m_options.isDiscarding)
        return;
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

void ChannelGrab::conclude()
{
    GrabRecord& record = m_result.record;
    if (!m_isRunning)
        return;
    record.counted = std::max(readCounter(), record.countedAtLast);
    drain();
    m_result.account = GrabAccount::of(record);
    m_result.intervals = GrabIntervals::of(record);
}

/// A stopped channel still gives what its ring holds.
void ChannelGrab::drain()
{
    GrabRecord& record = m_result.record;
    try {
        while (record.fetched + record.drained < record.counted) {
            const auto picture = m_channel.grab();
            if (!picture)
                break;
            ++record.drained;
            if (picture->timestamp)
                record.addTimestamp(record.fetched + record.drained, *picture->timestamp);
        }
        record.isDrained = true;
    } catch (const aik::Error&) {
        // Once the board has lost a picture under "OldestFirst", the rest of its ring can't be had.
    }
}

/// At least as many as were fetched.
uint64_t ChannelGrab::readCounter()
{
    uint64_t counted = 0;
    try {
        counted = m_channel.read<uint64_t>("FrameCountSinceLastStart");
    } catch (const std::runtime_error& failure) {
        fail("frame count", failure.what());
    }
    return std::max(counted, m_result.record.fetched);
}

void ChannelGrab::fail(const char* step, const std::string& text)
{
    if (!m_result.failure.empty())
        return;
    m_result.failure = text;
    m_result.failedStep = step;
    m_result.record.lostByOverflow = lostByOverflow(text);
}

}   // namespace orvo::aikctl

#include "aikctl/grab/ChannelGrab.h"

#include <algorithm>
#include <charconv>
#include <new>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "aikctl/pictures/PixelFormat.h"

namespace orvo::aikctl {

namespace {

using namespace std::chrono_literals;

constexpr const char* kNoPicture = "No picture came in time";
// A channel that waits for room for a shorter share of its time was held up by nothing behind it.
constexpr double kNoBottleneck = 0.02;

// The adapter's words.
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

double secondsOf(std::chrono::steady_clock::duration duration)
{
    return std::chrono::duration<double>(duration).count();
}

}   // namespace

ChannelGrab::ChannelGrab(aik::Channel& channel, GrabOptions options)
    : m_channel(channel), m_options(std::move(options))
{
    m_saved.channel = channel.index();
    m_result.failure = channel.failure();
    m_result.record.isTriggered = m_options.isTriggered;
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
        if (m_options.buffers > 0)
            m_channel.write("BufferCount", m_options.buffers);
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

void ChannelGrab::fetch(PictureQueue* queue, std::function<void()> onNews)
{
    m_queue = queue;
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
    const auto begin = Clock::now();
    m_secondBegin = begin;
    if (m_options.duration)
        m_end = begin + std::chrono::duration_cast<Clock::duration>(*m_options.duration);
    try {
        auto deadline = Clock::now() + timeout;
        while (!isOver()) {
            if (m_queue && !m_room) {
                awaitRoom();
                deadline = Clock::now() + timeout;
                continue;
            }
            if (const auto picture = next()) {
                take(*picture);
                onNews();
                deadline = Clock::now() + timeout;
            } else if (Clock::now() >= deadline) {
                throw std::runtime_error(kNoPicture);
            }
            if (m_options.isWatched && Clock::now() >= m_secondBegin + 1s)
                endSecond();
        }
        if (m_fetched == 0 && !m_isAskedToEnd)
            throw std::runtime_error(kNoPicture);
    } catch (const std::exception& failure) {
        fail("fetch", failure.what());
    }
    m_fetching = Clock::now() - begin;
    handOverWaiting();
    if (m_room)
        m_queue->giveBack(std::move(m_room));
    if (m_options.isWatched && m_now.pictures > 0)
        endSecond();
    if (m_fetched < m_options.count)
        m_result.record.countedAtLast = readCounter();
}

bool ChannelGrab::isOver() const
{
    return m_fetched >= m_options.count || m_isAskedToEnd || m_saved.hasFailed ||
           (m_end && Clock::now() >= *m_end);
}

/// Leaves none if the grab is over before there is room.
void ChannelGrab::awaitRoom()
{
    m_room = m_queue->room(m_channel.capacity(), [] { return true; });
    if (m_room)
        return;
    const auto begin = Clock::now();
    handOverWaiting();   // perhaps they have the room
    m_room = m_queue->room(m_channel.capacity(), [this] { return isOver(); });
    m_waited += Clock::now() - begin;
}

/// Looks at the frame counter when the first picture has come, before it is fetched: more come meanwhile.
std::optional<aik::Picture> ChannelGrab::next()
{
    if (m_result.record.countedAtFirst == 0) {
        if (!m_channel.wait())
            return std::nullopt;
        m_result.record.countedAtFirst = readCounter();
    }
    return m_room ? m_channel.grabInto(m_room->memory.get(), m_room->size) : m_channel.grab();
}

void ChannelGrab::take(const aik::Picture& picture)
{
    const auto now = Clock::now();
    GrabRecord& record = m_result.record;
    record.fetched = ++m_fetched;
    if (picture.timestamp)
        record.addTimestamp(record.fetched, *picture.timestamp);
    if (m_fetched == 1)
        m_firstTime = now;
    if (now > m_firstTime)
        m_result.picturesPerSecond = static_cast<double>(m_fetched - 1) / secondsOf(now - m_firstTime);
    if (m_fetched == m_options.count)
        record.countedAtLast = readCounter();
    ++m_now.pictures;
    m_now.bytes += picture.bytes.size();

    if (m_result.format.empty() && (picture.format || !m_room))
        describe(picture);
    if (!m_room)
        return;
    m_room->picture = picture;
    m_room->number = m_fetched;
    m_room->fetchedAt = std::chrono::system_clock::now();
    m_room->saved = &m_saved;
    m_waiting.push_back(std::move(m_room));
    if (picture.format)
        handOverWaiting();
}

void ChannelGrab::describe(const aik::Picture& picture)
{
    m_result.format = describePixelFormat(picture.format, picture.bytesPerPixel, picture.isPlanar);
    m_result.bytesPerPixel = picture.bytesPerPixel;
}

/// The first pictures of a full ring have no format yet: it is that of the last one, if this one has it.
void ChannelGrab::handOverWaiting()
{
    for (PictureQueue::Item& item : m_waiting) {
        item->picture.format = m_waiting.back()->picture.format;
        if (m_result.format.empty())
            describe(item->picture);
        m_queue->put(std::move(item));
    }
    m_waiting.clear();
}

void ChannelGrab::endSecond()
{
    const GrabRecord& record = m_result.record;
    const auto now = Clock::now();
    const uint64_t counted = readCounter();
    const uint64_t countedBefore = std::exchange(m_countedBefore, counted);
    const uint64_t came = counted - countedBefore;
    const bool isSkipping = record.strategy != "OldestFirst";
    m_now.seconds = std::chrono::duration<double>(now - std::exchange(m_secondBegin, now)).count();
    m_now.skipped = isSkipping && came > m_now.pictures ? came - m_now.pictures : 0;
    uint64_t arrivals = m_now.pictures + m_now.skipped;
    const size_t timedBefore = std::exchange(m_timedBefore, record.timestamps.size());
    // Only where there is an earlier time stamp, an interval ends with the first picture of this second.
    const uint64_t firstTimed = record.numberOfFirstTimed();
    if (timedBefore == 0 && firstTimed > countedBefore)
        arrivals -= std::min(arrivals, firstTimed - countedBefore);
    const size_t first = timedBefore == 0 ? 0 : timedBefore - 1;
    const auto intervals = GrabIntervals::since(first, arrivals, record);
    m_now.lost = intervals.lost;
    m_now.gaps = intervals.gaps;
    const os::MutexLock lock(m_mutex);
    m_seconds.push_back(std::exchange(m_now, {}));
}

std::vector<GrabSecond> ChannelGrab::takeSeconds()
{
    const os::MutexLock lock(m_mutex);
    return std::exchange(m_seconds, {});
}

void ChannelGrab::conclude()
{
    GrabRecord& record = m_result.record;
    if (!m_saved.failure.empty())
        fail("save", m_saved.failure);
    if (!m_isRunning)
        return;
    record.counted = std::max(readCounter(), record.countedAtLast);
    record.fetchedTimes = record.timestamps.size();
    drain();
    m_result.account = GrabAccount::of(record);
    m_result.intervals = GrabIntervals::of(record);
    m_result.bottleneck = bottleneck();
}

Bottleneck ChannelGrab::bottleneck() const
{
    if (secondsOf(m_waited) > kNoBottleneck * secondsOf(m_fetching))
        return m_saved.encoding > m_saved.writing ? Bottleneck::Encoder : Bottleneck::Disk;
    const bool isRingFull = m_result.account.skipped > 0 || m_result.record.lostByOverflow > 0;
    return isRingFull ? Bottleneck::Ring : Bottleneck::Board;
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

#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "aik/aik.hpp"
#include "aikctl/grab/GrabAccount.h"
#include "aikctl/grab/PictureSaver.h"
#include "os/ThreadSafety.h"

namespace orvo::aikctl {

struct GrabOptions {
    uint64_t count = 10;    // pictures from each channel
    std::string strategy;   // for "AcquisitionStrategy"; empty leaves it alone
    uint64_t buffers = 0;   // for "BufferCount"; 0 leaves it alone
    bool isPlanar = false;
    bool isTriggered = false;                   // pictures are taken by commands, at no steady rate
    bool isWatched = false;                     // sum up each second; see takeSeconds()
    std::chrono::duration<double> timeout{5};   // the longest wait for one picture
    std::optional<std::chrono::duration<double>> duration{};   // ends the grab, even before `count`
};

/// What kept a channel from delivering more pictures.
enum class Bottleneck {
    Board,   // or its camera, or the adapter: everything that came was fetched
    Ring,    // pictures were skipped or lost, though there was room behind: the fetching thread came too late
    Encoder,   // room was missing, and most of the time of the saving threads went into encoding
    Disk,      // likewise, into writing
};

/// What happened in about a second.
struct GrabSecond {
    double seconds = 0;
    uint64_t pictures = 0;   // fetched
    uint64_t bytes = 0;      // of these
    uint64_t skipped = 0;    // came, and were not fetched; up to a ring more or less
    std::optional<uint64_t> lost;
    uint64_t gaps = 0;
};

/// How the grab of one channel went.
struct GrabResult {
    std::string format;             // of the first picture, for people; empty without one
    uint32_t bytesPerPixel = 0;     // likewise
    double picturesPerSecond = 0;   // from the first to the last; 0 below two pictures
    GrabRecord record;              // what was seen of the pictures
    GrabAccount account;
    GrabIntervals intervals;
    Bottleneck bottleneck = Bottleneck::Board;
    std::string failure;      // why it ended early, or was not begun
    std::string failedStep;   // what failed; empty if the channel itself did

    /// Pictures that came while the channel was grabbed from, and that nobody can have any more: skipped, lost on
    /// the line or by the board.
    bool hasLost() const
    {
        return account.skipped > 0 || record.lostByOverflow > 0 || intervals.lost.value_or(0) > 0;
    }
};

/// Fetches pictures from one channel, on a thread of its own, and hands them to a queue. Call in this order:
/// prepare(), start(), fetch(), askToEnd() if need be, join(), stop(), conclude(), result().
/// Threads: fetched(), isDone() and takeSeconds() on any, the rest on one.
/// Throws:  nothing. A failure ends this channel's grab alone, and stands in its result.
class ChannelGrab {
public:
    /// The channel outlives the grab.
    ChannelGrab(aik::Channel& channel, GrabOptions options);
    ChannelGrab(const ChannelGrab&) = delete;
    ChannelGrab& operator=(const ChannelGrab&) = delete;
    ~ChannelGrab();

    /// Writes the features and builds the ring.
    void prepare();
    /// Whether no step so far has failed. Until fetch().
    bool isReady() const { return m_result.failure.empty(); }
    /// Starts the channel.
    void start();
    /// Starts the thread. It calls `onNews` after each picture and when it is done. If this or an earlier
    /// step fails, the grab is done at once and `onNews` is never called. Without a queue the pictures are
    /// discarded; it outlives the thread.
    void fetch(PictureQueue* queue, std::function<void()> onNews);
    void askToEnd() { m_isAskedToEnd = true; }
    void join();
    void stop();
    /// Takes what is left in the ring, and draws up the account. All channels are stopped, and what they
    /// handed over is saved.
    void conclude();

    aik::Channel& channel() const { return m_channel; }
    uint64_t fetched() const { return m_fetched; }
    bool isDone() const { return m_isDone; }
    /// What happened, second by second, since the last call. Only if the grab is watched.
    std::vector<GrabSecond> takeSeconds();

    const GrabResult& result() const { return m_result; }    // after conclude()
    const SavedPictures& saved() const { return m_saved; }   // likewise

private:
    using Clock = std::chrono::steady_clock;

    void fetchAll(const std::function<void()>& onNews);
    bool isOver() const;
    void awaitRoom();
    std::optional<aik::Picture> next();
    void take(const aik::Picture& picture);
    void describe(const aik::Picture& picture);
    void handOverWaiting();
    void endSecond();
    Bottleneck bottleneck() const;
    void drain();
    uint64_t readCounter();
    void fail(const char* step, const std::string& text);

    aik::Channel& m_channel;
    const GrabOptions m_options;
    bool m_isRunning = false;
    std::thread m_thread;
    std::atomic<bool> m_isAskedToEnd{false};
    std::atomic<uint64_t> m_fetched{0};
    std::atomic<bool> m_isDone{false};

    SavedPictures m_saved;
    os::Mutex m_mutex;
    std::vector<GrabSecond> m_seconds ORVO_GUARDED_BY(m_mutex);   // until they are taken

    // Used by the fetching thread alone from fetch() to join().
    PictureQueue* m_queue = nullptr;
    PictureQueue::Item m_room;                   // for the next picture
    std::vector<PictureQueue::Item> m_waiting;   // fetched before the format was known
    std::optional<Clock::time_point> m_end;
    Clock::time_point m_firstTime;   // of the fetches
    Clock::duration m_fetching{0};   // from the start of fetching to its end
    Clock::duration m_waited{0};     // of that, for room
    GrabResult m_result;
    // Of the present second: since when, and what there was before it.
    Clock::time_point m_secondBegin;
    GrabSecond m_now;
    uint64_t m_countedBefore = 0;
    size_t m_timedBefore = 0;
};

}   // namespace orvo::aikctl

#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "aik/aik.hpp"
#include "aikctl/grab/GrabAccount.h"
#include "aikctl/pictures/PictureFile.h"
#include "aikctl/pictures/PictureFolder.h"

namespace orvo::aikctl {

struct GrabOptions {
    uint64_t count = 10;    // pictures from each channel
    std::string strategy;   // for "AcquisitionStrategy"; empty leaves it alone
    bool isPlanar = false;
    bool isDiscarding = false;   // save nothing
    Encoding encoding{};
    std::chrono::duration<double> timeout{5};   // the longest wait for one picture
};

/// How the grab of one channel went.
struct GrabResult {
    std::string format;             // of the first picture, for people; empty without one
    uint64_t pictures = 0;          // saved
    double picturesPerSecond = 0;   // from the first to the last; 0 below two pictures
    GrabRecord record;              // what was seen of the pictures
    GrabAccount account;
    GrabIntervals intervals;
    std::string note;         // worth telling, but no failure
    std::string failure;      // why it ended early, or was not begun
    std::string failedStep;   // what failed; empty if the channel itself did

    /// Pictures that came while the channel was grabbed from, and that nobody can have any more: skipped, lost on
    /// the line or by the board.
    bool hasLost() const
    {
        return account.skipped > 0 || record.lostByOverflow > 0 || intervals.lost.value_or(0) > 0;
    }
};

/// Fetches pictures from one channel and saves them, on a thread of its own. Call in this order: prepare(),
/// start(), fetch(), askToEnd() if need be, join(), stop(), conclude(), result().
/// Threads: fetched() and isDone() on any, the rest on one.
/// Throws:  nothing. A failure ends this channel's grab alone, and stands in its result.
class ChannelGrab {
public:
    /// Copies the options. Channel and folder outlive the grab.
    ChannelGrab(aik::Channel& channel, GrabOptions options, const PictureFolder& folder);
    ChannelGrab(const ChannelGrab&) = delete;
    ChannelGrab& operator=(const ChannelGrab&) = delete;
    ~ChannelGrab();

    /// Writes the features and builds the ring.
    void prepare();
    /// Starts the channel.
    void start();
    /// Starts the thread. It calls `onNews` after each picture and when it is done. If this or an earlier
    /// step fails, the grab is done at once and `onNews` is never called.
    void fetch(std::function<void()> onNews);
    void askToEnd() { m_isAskedToEnd = true; }
    void join();
    void stop();
    /// Takes what is left in the ring, and draws up the account. All channels are stopped.
    void conclude();

    aik::Channel& channel() const { return m_channel; }
    uint64_t fetched() const { return m_fetched; }
    bool isDone() const { return m_isDone; }
    const GrabResult& result() const { return m_result; }   // after conclude()

private:
    using Clock = std::chrono::steady_clock;
    using Image = std::span<const uint8_t>;

    void fetchAll(const std::function<void()>& onNews);
    std::optional<aik::Picture> next();
    void take(const aik::Picture& picture);
    void save(Image image);
    void saveWaiting();
    void drain();
    uint64_t readCounter();
    void fail(const char* step, const std::string& text);

    aik::Channel& m_channel;
    const GrabOptions m_options;
    const PictureFolder& m_folder;
    bool m_isRunning = false;
    std::thread m_thread;
    std::atomic<bool> m_isAskedToEnd{false};
    std::atomic<uint64_t> m_fetched{0};
    std::atomic<bool> m_isDone{false};

    // Used by the fetching thread alone from fetch() to join().
    aik::Picture m_last;                           // how to read the bytes, its own and those that wait
    std::vector<std::vector<uint8_t>> m_waiting;   // a few, fetched before the format was known
    const char* m_step = "fetch";                  // what the thread does
    Clock::time_point m_firstTime;
    PictureFile m_file;
    GrabResult m_result;
};

}   // namespace orvo::aikctl

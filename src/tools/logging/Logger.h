#pragma once

#include <atomic>
#include <cstdint>
#include <set>

#include "templates/platform/Locks.h"

namespace orvo::tools::logging {

// The levels of the logging dispatcher: a higher number is more severe. These are in use.
inline constexpr int32_t kTrace = 1;       // the steps of a call
inline constexpr int32_t kTolerated = 4;   // a failure that the code goes on from
inline constexpr int32_t kCaught = 5;      // a caught failure
inline constexpr int32_t kOff = 7;         // the threshold that no record in use reaches

/// One named source of records: its number at the dispatcher and the lowest level that is on. Owned by
/// Logging. Any thread.
class Logger {
public:
    explicit Logger(int64_t id, int32_t threshold = kOff) : m_id(id), m_threshold(threshold) {}
    Logger(const Logger&) = delete;
    Logger& operator=(const Logger&) = delete;
    virtual ~Logger() = default;

    /// Whether a record of this level would be written for the calling thread. Ask before building its text.
    bool isEnabled(int32_t level)
    {
        // Without the mutex: a record that is off costs this comparison and nothing else.
        return level >= m_threshold.load(std::memory_order_relaxed) && isThreadEnabled();
    }
    /// Hands the record to the dispatcher. The two words are passed on and mean nothing here.
    void write(int32_t level, const char* text, uint32_t word, uint64_t longWord);

    /// Switches this logger on or off for the calling thread. Answers whether it was on.
    bool setThreadEnabled(bool enable);
    void setThreshold(int32_t level) { m_threshold.store(level, std::memory_order_relaxed); }

private:
    bool isThreadEnabled();

    int64_t m_id;
    templates::platform::RecursiveMutex m_mutex;
    std::set<uint32_t> m_mutedThreads ORVO_GUARDED_BY(m_mutex);
    std::atomic<int32_t> m_threshold;
};

}   // namespace orvo::tools::logging

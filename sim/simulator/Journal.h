#pragma once

#include <atomic>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "os/ThreadSafety.h"

namespace orvo::sim {

/// Chooses calls by the function's name and any of their arguments: "Brd_getParameter id=3080 dma=0".
class CallPattern {
public:
    explicit CallPattern(std::string_view text);

    const std::string& text() const { return m_text; }
    std::string function() const { return m_words.empty() ? "" : m_words.front(); }
    bool matches(std::string_view function, std::string_view arguments) const;

private:
    std::string m_text;
    std::vector<std::string> m_words;   // the name first; empty if the text is
};

/// Chooses lines of the journal by the function's name: "Brd_AddMem Brd_get* -Brd_getStatusEx".
class FunctionFilter {
public:
    explicit FunctionFilter(std::string_view text);

    bool keeps(std::string_view function) const;

private:
    std::vector<std::string> m_kept;   // none: all
    std::vector<std::string> m_dropped;
};

/// All calls, one line each, in the order in which they began. Threads: any.
class Journal {
public:
    static constexpr uint64_t kDefaultLimit = 10'000;

    /// Where a call that is under way has its line; of no use once the journal was cleared.
    struct Place {
        uint64_t line = 0;
        uint64_t epoch = 0;
    };

    /// False when the limit is reached: nothing needs to be made into text then.
    bool isRecording() const { return m_recording.load(std::memory_order_relaxed); }

    Place begin(std::string_view function, std::string_view arguments);
    void end(Place place, std::string_view rest);

    std::string text(const FunctionFilter& filter, uint64_t from) const;
    uint64_t count() const;
    void clear();
    void setLimit(uint64_t lines);

private:
    struct Line {
        std::string function;
        std::string arguments;
        std::string rest;
    };

    void noteRecording() ORVO_REQUIRES(m_mutex);

    mutable os::Mutex m_mutex;
    std::vector<Line> m_lines ORVO_GUARDED_BY(m_mutex);
    uint64_t m_limit ORVO_GUARDED_BY(m_mutex) = kDefaultLimit;
    uint64_t m_epoch ORVO_GUARDED_BY(m_mutex) = 1;   // a place of epoch 0 has no line
    std::atomic<bool> m_recording{true};
};

}   // namespace orvo::sim

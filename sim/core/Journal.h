#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "sim/core/CallPattern.h"

namespace orvo::sim {

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

    void noteRecording();

    mutable std::mutex m_mutex;
    std::vector<Line> m_lines;
    uint64_t m_limit = kDefaultLimit;
    uint64_t m_epoch = 1;   // a place of epoch 0 has no line
    std::atomic<bool> m_recording{true};
};

}   // namespace orvo::sim

#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

#include "sim/orvo_sim_dispatcher.h"

namespace orvo::sim {

/// Records kept in memory, as they arrived, for whoever wants to read them back. Threads: any.
class RecordCapture {
public:
    void set(bool on);
    void add(int64_t id, int32_t level, const std::string& logger, const std::string& text, uint32_t word,
             uint64_t longWord);
    /// False behind the last. The texts live until clear().
    bool read(uint64_t index, OrvoSimLog_Record& record);
    void clear();

private:
    struct Record {
        int64_t id;
        int32_t level;
        std::string logger;
        std::string text;
        uint32_t word;
        uint64_t longWord;
    };

    std::mutex m_mutex;
    bool m_on = false;
    std::deque<Record> m_records;   // a deque: texts stay where they are while others are added
};

}   // namespace orvo::sim

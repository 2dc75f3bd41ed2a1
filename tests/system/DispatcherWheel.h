#pragma once

#include <string>
#include <vector>

#include "sim/orvo_sim_dispatcher.h"

namespace orvo::test {

/// The simulated logging dispatcher beside the adapter, capturing all records from level 1 on.
class DispatcherWheel {
public:
    DispatcherWheel();
    DispatcherWheel(const DispatcherWheel&) = delete;
    DispatcherWheel& operator=(const DispatcherWheel&) = delete;
    ~DispatcherWheel();

    /// The records so far, then no longer: "LEVEL LOGGER TEXT". Thread ids read as T, and lines as N but for
    /// those that the adapter's interface fixes.
    std::vector<std::string> take();

    void setLevel(const char* logger, int32_t level) { m_setLevel(logger, level); }
    void goAway() { m_goAway(); }

private:
    OrvoSimLog_setLevel_t m_setLevel;
    OrvoSimLog_goAway_t m_goAway;
    OrvoSimLog_capture_t m_capture;
    OrvoSimLog_read_t m_read;
    OrvoSimLog_clear_t m_clear;
};

}   // namespace orvo::test

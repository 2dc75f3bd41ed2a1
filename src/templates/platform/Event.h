#pragma once

#include <condition_variable>
#include <mutex>

namespace orvo::templates::platform {

/// A flag that threads wait for. It stays signalled until it is reset, and wakes all who wait.
class Event {
public:
    explicit Event(bool signalled) : m_signalled(signalled) {}

    void set();
    void reset();
    void wait();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    bool m_signalled;
};

}   // namespace orvo::templates::platform

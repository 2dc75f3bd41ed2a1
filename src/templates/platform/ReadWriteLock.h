#pragma once

#include <cstdint>
#include <mutex>

#include "templates/platform/Event.h"

namespace orvo::templates::platform {

/// Many readers or one writer. A waiting writer goes before new readers. Not reentrant: a holder that asks
/// again waits for itself.
class ReadWriteLock {
public:
    virtual ~ReadWriteLock() = default;

    void lockRead();
    void lockWrite();
    /// Ends the caller's hold, of either kind.
    void unlock();

private:
    bool tryRead();
    bool tryWrite();

    uint32_t m_readers = 0;
    uint32_t m_waitingWriters = 0;
    bool m_writerInside = false;
    Event m_noReaders{true};
    Event m_noWriter{true};
    std::mutex m_state;
};

}   // namespace orvo::templates::platform

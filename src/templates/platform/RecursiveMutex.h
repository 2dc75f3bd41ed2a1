#pragma once

#include <cstdint>
#include <mutex>

#include "templates/platform/Guard.h"

namespace orvo::templates::platform {

/// A mutex that its owner thread may take again.
class RecursiveMutex {
public:
    virtual ~RecursiveMutex() = default;

    void lock();
    void unlock();
    /// How often the owner holds it now. For the owner to ask; other threads would race.
    int32_t lockCount() const { return m_lockCount; }

private:
    std::recursive_mutex m_mutex;
    int32_t m_lockCount = 0;
};

/// Holds a RecursiveMutex for a scope.
class RecursiveMutexGuard : public patterns::Guard<RecursiveMutex*> {
public:
    explicit RecursiveMutexGuard(RecursiveMutex& mutex);
    ~RecursiveMutexGuard() override;
};

}   // namespace orvo::templates::platform

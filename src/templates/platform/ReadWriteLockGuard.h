#pragma once

#include <cstdint>

#include "templates/platform/Guard.h"
#include "templates/platform/ReadWriteLock.h"

namespace orvo::templates::platform {

enum class LockMode : int32_t { Read = 1, Write = 2 };

/// Holds a ReadWriteLock for a scope.
class ReadWriteLockGuard : public patterns::Guard<ReadWriteLock*> {
public:
    ReadWriteLockGuard(ReadWriteLock& lock, LockMode mode);
    ~ReadWriteLockGuard() override;
};

}   // namespace orvo::templates::platform

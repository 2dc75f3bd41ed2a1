#pragma once

namespace orvo::templates::patterns {

/// Base of the guards: the lock, and whether this guard holds it.
template <typename LockPointer>
class Guard {
public:
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;
    virtual ~Guard() = default;

    bool holdsLock() const { return m_holdsLock; }

protected:
    explicit Guard(LockPointer lock) : m_lock(lock) {}

    LockPointer m_lock;
    bool m_holdsLock = true;
};

}   // namespace orvo::templates::patterns

#pragma once

#include <mutex>

/// The annotations by which clang checks at compile time who may touch what under which lock. Other compilers
/// know none of them.
#if defined(__clang__)
#define ORVO_THREAD_ANNOTATION(annotation) __attribute__((annotation))
#else
#define ORVO_THREAD_ANNOTATION(annotation)
#endif

// Of a class: a lock; an object that holds a lock for a scope.
#define ORVO_CAPABILITY(name) ORVO_THREAD_ANNOTATION(capability(name))
#define ORVO_SCOPED_CAPABILITY ORVO_THREAD_ANNOTATION(scoped_lockable)
// Of a member: the lock that guards it, or guards what it points at.
#define ORVO_GUARDED_BY(lock) ORVO_THREAD_ANNOTATION(guarded_by(lock))
#define ORVO_PT_GUARDED_BY(lock) ORVO_THREAD_ANNOTATION(pt_guarded_by(lock))
// Of a function: what its caller holds, or must not hold.
#define ORVO_REQUIRES(...) ORVO_THREAD_ANNOTATION(requires_capability(__VA_ARGS__))
#define ORVO_REQUIRES_SHARED(...) ORVO_THREAD_ANNOTATION(requires_shared_capability(__VA_ARGS__))
#define ORVO_EXCLUDES(...) ORVO_THREAD_ANNOTATION(locks_excluded(__VA_ARGS__))
// Of a function: what it takes and gives back.
#define ORVO_ACQUIRE(...) ORVO_THREAD_ANNOTATION(acquire_capability(__VA_ARGS__))
#define ORVO_ACQUIRE_SHARED(...) ORVO_THREAD_ANNOTATION(acquire_shared_capability(__VA_ARGS__))
#define ORVO_TRY_ACQUIRE(...) ORVO_THREAD_ANNOTATION(try_acquire_capability(__VA_ARGS__))
#define ORVO_RELEASE(...) ORVO_THREAD_ANNOTATION(release_capability(__VA_ARGS__))
#define ORVO_RELEASE_SHARED(...) ORVO_THREAD_ANNOTATION(release_shared_capability(__VA_ARGS__))
#define ORVO_RELEASE_GENERIC(...) ORVO_THREAD_ANNOTATION(release_generic_capability(__VA_ARGS__))
// Of a function that the analysis can't follow; its comment says why.
#define ORVO_NO_THREAD_SAFETY_ANALYSIS ORVO_THREAD_ANNOTATION(no_thread_safety_analysis)

namespace orvo::os {

/// A std::mutex that clang's analysis knows: the standard library's own carries no annotations.
class ORVO_CAPABILITY("mutex") Mutex {
public:
    void lock() ORVO_ACQUIRE() { m_mutex.lock(); }
    void unlock() ORVO_RELEASE() { m_mutex.unlock(); }

private:
    friend class MutexLock;

    std::mutex m_mutex;
};

/// Holds a Mutex for a scope.
class ORVO_SCOPED_CAPABILITY MutexLock {
public:
    explicit MutexLock(Mutex& mutex) ORVO_ACQUIRE(mutex) : m_lock(mutex.m_mutex) {}
    MutexLock(const MutexLock&) = delete;
    MutexLock& operator=(const MutexLock&) = delete;
    ~MutexLock() ORVO_RELEASE() = default;

    void unlock() ORVO_RELEASE() { m_lock.unlock(); }
    void lock() ORVO_ACQUIRE() { m_lock.lock(); }

    /// For a std::condition_variable. To the analysis a wait keeps the lock all the time.
    std::unique_lock<std::mutex>& native() { return m_lock; }

private:
    std::unique_lock<std::mutex> m_lock;
};

}   // namespace orvo::os

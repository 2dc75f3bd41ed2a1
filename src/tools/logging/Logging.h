#pragma once

#include <atomic>
#include <cstdint>
#include <exception>
#include <map>
#include <memory>

#include "templates/platform/Locks.h"
#include "templates/platform/Singletons.h"
#include "tools/logging/Logger.h"

namespace orvo::cognex {
class SharedLibrary;
}

namespace orvo::tools::logging {

// The interface of the logging dispatcher, a library of its own that may be missing.

/// Stores the number of the logger called `name` and the lowest level that is on for it.
using QueryFunction = void (*)(const char* name, int64_t* id, int32_t* level);
using WriteFunction = void (*)(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord);

/// The data that the dispatcher exports as "logging_dispatcher_descriptor". It may call `gone` and
/// `levelChanged` on any thread between attach and detach.
struct DispatcherDescriptor {
    void (*attach)(void* logging, void (*gone)(), void (*levelChanged)(int64_t id, int32_t level),
                   QueryFunction* whereQuery, WriteFunction* whereWrite);
    void (*detach)(void* logging, void* descriptor);
};

/// Owns the loggers of the process and hands their records to the dispatcher. Without a dispatcher every logger
/// is the default one, for which all levels in use are off. Any thread.
/// Throws:  std::bad_alloc alone, from getLogger().
class Logging : public templates::platform::GuardedSingleton<Logging> {
public:
    Logging();
    ~Logging() override;

    /// The logger of that name, owned by this object: good until the last use of LibraryInitController ends.
    Logger* getLogger(const char* name);
    void write(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord);

protected:
    void initialise() override;

private:
    static void dispatcherGone();
    static void levelChanged(int64_t id, int32_t level);

    Logger m_defaultLogger{0};
    QueryFunction m_query = nullptr;
    WriteFunction m_write = nullptr;
    std::atomic<DispatcherDescriptor*> m_descriptor{nullptr};   // null: no dispatcher
    std::unique_ptr<cognex::SharedLibrary> m_library;
    templates::platform::ReadWriteLock m_lock;
    std::map<int64_t, std::unique_ptr<Logger>> m_loggers ORVO_GUARDED_BY(m_lock);
};

/// The logger of one object, fetched by its name at the first use. Any thread; the object goes before the
/// loggers do. Null where there is no memory for a logger: a record must not fail the call that it tells of.
class CachedLogger {
public:
    /// `name` is kept as a pointer: give a literal.
    explicit CachedLogger(const char* name) : m_name(name) {}

    Logger* get() noexcept
    try {
        Logger* logger = m_logger.load(std::memory_order_acquire);
        if (!logger) {
            logger = Logging::instance().getLogger(m_name);
            m_logger.store(logger, std::memory_order_release);
        }
        return logger;
    } catch (const std::exception&) {
        return nullptr;
    }

private:
    const char* m_name;
    std::atomic<Logger*> m_logger{nullptr};
};

}   // namespace orvo::tools::logging

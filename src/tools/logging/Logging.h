#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>

#include "templates/platform/GuardedSingleton.h"
#include "templates/platform/ReadWriteLock.h"
#include "tools/logging/Dispatcher.h"
#include "tools/logging/Logger.h"

namespace orvo::cognex {
class SharedLibrary;
}

namespace orvo::tools::logging {

/// The process's loggers, and the way of their records to the dispatcher. Without a dispatcher every logger
/// is the default one, for which all levels in use are off. Reports no failure to its callers. Any thread.
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
    std::map<int64_t, std::unique_ptr<Logger>> m_loggers;   // guarded by m_lock
};

}   // namespace orvo::tools::logging

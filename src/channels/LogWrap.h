#pragma once

#include "tools/logging/Logging.h"

namespace orvo::cognex {

/// The logger of the exports, and the process's use of the support library: while it exists, there is logging.
/// Threads: made and destroyed by calls that the host serialises; logger() on any thread between.
class LogWrap {
public:
    LogWrap();
    LogWrap(const LogWrap&) = delete;
    LogWrap& operator=(const LogWrap&) = delete;
    virtual ~LogWrap();

    virtual tools::logging::Logger* logger() { return m_logger.get(); }

    /// The one instance, or null.
    static LogWrap* instance();
    /// Makes the instance if there is none and there is memory for it.
    static void createInstance() noexcept;
    /// Destroys the instance, and all loggers with it.
    static void destroyInstance();

private:
    tools::logging::CachedLogger m_logger{"orvo.Cognex.Interface"};
};

}   // namespace orvo::cognex

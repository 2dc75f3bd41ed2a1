#pragma once

#include <atomic>
#include <exception>

#include "tools/logging/Logging.h"

namespace orvo::tools::logging {

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

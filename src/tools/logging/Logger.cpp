#include "tools/logging/Logger.h"

#include "os/Os.h"
#include "tools/logging/Logging.h"

namespace orvo::tools::logging {

using templates::platform::RecursiveMutexGuard;

bool Logger::isEnabled(int32_t level)
{
    // First and without the mutex: a record that is off costs this comparison and nothing else.
    if (level < m_threshold.load(std::memory_order_relaxed))
        return false;
    const RecursiveMutexGuard guard(m_mutex);
    return !m_mutedThreads.contains(os::currentThreadId());
}

void Logger::write(int32_t level, const char* text, uint32_t word, uint64_t longWord)
{
    Logging::instance().write(m_id, level, text, word, longWord);
}

bool Logger::setThreadEnabled(bool enable)
{
    const RecursiveMutexGuard guard(m_mutex);
    const uint32_t thread = os::currentThreadId();
    return enable ? m_mutedThreads.erase(thread) == 0 : m_mutedThreads.insert(thread).second;
}

}   // namespace orvo::tools::logging

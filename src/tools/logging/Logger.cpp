#include "tools/logging/Logger.h"

#include "os/Os.h"
#include "tools/logging/Logging.h"

namespace orvo::tools::logging {

using templates::platform::RecursiveMutexGuard;

bool Logger::isThreadEnabled()
{
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

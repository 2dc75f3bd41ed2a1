#include "tools/logging/Logging.h"

#include "brdlib/binding/SharedLibrary.h"
#include "templates/platform/Locks.h"

namespace orvo::tools::logging {

using templates::platform::ReadGuard;
using templates::platform::WriteGuard;

Logging::Logging() = default;

Logging::~Logging()
{
    {
        // Emptied under the lock: until it is detached, the dispatcher may still change a level.
        const WriteGuard guard(m_lock);
        m_loggers.clear();
    }
    if (DispatcherDescriptor* const descriptor = m_descriptor)
        descriptor->detach(this, descriptor);
}

void Logging::initialise()
{
    m_library = cognex::openLibrary("common-logging-dispatcher", nullptr);
    if (!m_library)
        return;
    auto* const descriptor =
        static_cast<DispatcherDescriptor*>(m_library->symbol("logging_dispatcher_descriptor"));
    if (!descriptor) {
        m_library.reset();
        return;
    }
    m_descriptor = descriptor;
    descriptor->attach(this, &Logging::dispatcherGone, &Logging::levelChanged, &m_query, &m_write);
}

Logger* Logging::getLogger(const char* name)
{
    if (!m_descriptor)
        return &m_defaultLogger;
    int64_t id = 0;
    int32_t level = kOff;
    m_query(name, &id, &level);
    const WriteGuard guard(m_lock);
    auto entry = m_loggers.find(id);
    if (entry == m_loggers.end())   // the logger first: there must be no entry without one
        entry = m_loggers.emplace(id, std::make_unique<Logger>(id, level)).first;
    return entry->second.get();
}

void Logging::write(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord)
{
    if (m_descriptor)
        m_write(id, level, text, word, longWord);
}

void Logging::dispatcherGone()
{
    instance().m_descriptor = nullptr;
}

void Logging::levelChanged(int64_t id, int32_t level)
{
    Logging& logging = instance();
    const ReadGuard guard(logging.m_lock);
    const auto logger = logging.m_loggers.find(id);
    if (logger != logging.m_loggers.end())
        logger->second->setThreshold(level);
}

}   // namespace orvo::tools::logging

#include "templates/platform/Event.h"

namespace orvo::templates::platform {

void Event::set()
{
    const std::scoped_lock lock(m_mutex);
    m_signalled = true;
    m_changed.notify_all();
}

void Event::reset()
{
    const std::scoped_lock lock(m_mutex);
    m_signalled = false;
}

void Event::wait()
{
    std::unique_lock lock(m_mutex);
    m_changed.wait(lock, [this] { return m_signalled; });
}

}   // namespace orvo::templates::platform

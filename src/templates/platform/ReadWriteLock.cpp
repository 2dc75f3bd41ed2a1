#include "templates/platform/ReadWriteLock.h"

namespace orvo::templates::platform {

void ReadWriteLock::lockRead()
{
    // The event stays signalled while a writer merely waits, so a reader polls until that writer is in.
    do
        m_noWriter.wait();
    while (!tryRead());
}

void ReadWriteLock::lockWrite()
{
    {
        const std::scoped_lock lock(m_state);
        ++m_waitingWriters;
    }
    do {
        m_noReaders.wait();
        m_noWriter.wait();
    } while (!tryWrite());
}

void ReadWriteLock::unlock()
{
    const std::scoped_lock lock(m_state);
    if (m_writerInside) {
        m_writerInside = false;
        m_noWriter.set();
    } else if (--m_readers == 0) {
        m_noReaders.set();
    }
}

bool ReadWriteLock::tryRead()
{
    const std::scoped_lock lock(m_state);
    if (m_writerInside || m_waitingWriters > 0)
        return false;
    ++m_readers;
    m_noReaders.reset();
    return true;
}

bool ReadWriteLock::tryWrite()
{
    const std::scoped_lock lock(m_state);
    if (m_readers > 0 || m_writerInside)
        return false;
    --m_waitingWriters;
    m_writerInside = true;
    m_noWriter.reset();
    return true;
}

}   // namespace orvo::templates::platform

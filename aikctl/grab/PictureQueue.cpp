#include "aikctl/grab/PictureQueue.h"

#include <algorithm>
#include <utility>

namespace orvo::aikctl {

PictureQueue::Item PictureQueue::room(size_t size, std::chrono::milliseconds patience)
{
    os::MutexLock lock(m_mutex);
    const auto deadline = std::chrono::steady_clock::now() + patience;
    while (!hasRoom(size))
        if (m_hasRoom.wait_until(lock.native(), deadline) == std::cv_status::timeout && !hasRoom(size))
            return nullptr;
    Item picture = spare(size);
    if (!picture)
        picture = std::make_unique<QueuedPicture>(size);
    m_used += size;
    return picture;
}

/// Memory of just this size. Other memory goes, unless it fits the limit beside what is in use.
PictureQueue::Item PictureQueue::spare(size_t size)
{
    const auto found = std::ranges::find(m_spare, size, [](const Item& item) { return item->size; });
    Item picture;
    if (found != m_spare.end()) {
        picture = std::move(*found);
        m_spare.erase(found);
        m_spareBytes -= size;
    }
    while (!m_spare.empty() && m_used + size + m_spareBytes > m_limit) {
        m_spareBytes -= m_spare.back()->size;
        m_spare.pop_back();
    }
    return picture;
}

void PictureQueue::put(Item picture)
{
    const os::MutexLock lock(m_mutex);
    m_pictures.push_back(std::move(picture));
    m_hasPicture.notify_one();
}

PictureQueue::Item PictureQueue::take()
{
    os::MutexLock lock(m_mutex);
    while (m_pictures.empty() && !m_isClosed)
        m_hasPicture.wait(lock.native());
    if (m_pictures.empty())
        return nullptr;
    Item picture = std::move(m_pictures.front());
    m_pictures.pop_front();
    return picture;
}

void PictureQueue::giveBack(Item picture)
{
    const os::MutexLock lock(m_mutex);
    m_used -= picture->size;
    m_spareBytes += picture->size;
    m_spare.push_back(std::move(picture));
    m_hasRoom.notify_all();   // of several that wait, the one with the smallest picture may be served first
}

void PictureQueue::close()
{
    const os::MutexLock lock(m_mutex);
    m_isClosed = true;
    m_hasPicture.notify_all();
}

}   // namespace orvo::aikctl

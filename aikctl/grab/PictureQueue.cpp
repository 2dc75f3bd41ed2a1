#include "aikctl/grab/PictureQueue.h"

#include <algorithm>
#include <utility>

namespace orvo::aikctl {

namespace {

constexpr std::chrono::milliseconds kGivingUpInterval{50};   // how often those who wait are asked

}   // namespace

/// In turns: a large picture would never find room if each small one took what has just become free.
PictureQueue::Item PictureQueue::room(size_t size, const std::function<bool()>& isGivenUp)
{
    os::MutexLock lock(m_mutex);
    const uint64_t turn = m_nextTurn++;
    m_turns.push_back(turn);
    while ((m_turns.front() != turn || !hasRoom(size)) && !isGivenUp())
        m_hasRoom.wait_for(lock.native(), kGivingUpInterval);
    const bool isServed = m_turns.front() == turn && hasRoom(size);
    std::erase(m_turns, turn);
    m_hasRoom.notify_all();   // the next one may find room, too
    if (!isServed)
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
    m_hasRoom.notify_all();   // nobody knows which of those who wait is the first
}

void PictureQueue::close()
{
    const os::MutexLock lock(m_mutex);
    m_isClosed = true;
    m_hasPicture.notify_all();
}

}   // namespace orvo::aikctl

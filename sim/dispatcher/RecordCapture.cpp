#include "sim/dispatcher/RecordCapture.h"

namespace orvo::sim {

void RecordCapture::set(bool on)
{
    const std::lock_guard lock(m_mutex);
    m_on = on;
}

void RecordCapture::add(int64_t id, int32_t level, const std::string& logger, const std::string& text,
                        uint32_t word, uint64_t longWord)
{
    const std::lock_guard lock(m_mutex);
    if (m_on)
        m_records.push_back({id, level, logger, text, word, longWord});
}

bool RecordCapture::read(uint64_t index, OrvoSimLog_Record& record)
{
    const std::lock_guard lock(m_mutex);
    if (index >= m_records.size())
        return false;
    const Record& kept = m_records[index];
    record = {kept.id, kept.level, kept.word, kept.longWord, kept.logger.c_str(), kept.text.c_str()};
    return true;
}

void RecordCapture::clear()
{
    const std::lock_guard lock(m_mutex);
    m_records.clear();
}

}   // namespace orvo::sim

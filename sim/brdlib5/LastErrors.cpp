#include "sim/brdlib5/LastErrors.h"

#include <algorithm>

namespace orvo::sim {

void LastErrors::clear()
{
    const std::lock_guard lock(m_mutex);
    m_entries = {};
}

void LastErrors::set(size_t slot, int32_t number, std::string_view text)
{
    const std::lock_guard lock(m_mutex);
    m_entries[slot] = {number, std::string(text)};
}

int32_t LastErrors::number(size_t slot) const
{
    const std::lock_guard lock(m_mutex);
    return m_entries[slot].number;
}

void LastErrors::copyText(size_t slot, std::span<char> buffer) const
{
    const std::lock_guard lock(m_mutex);
    const size_t length = std::min(m_entries[slot].text.size(), buffer.size() - 1);
    std::copy_n(m_entries[slot].text.data(), length, buffer.data());
    buffer[length] = '\0';
}

}   // namespace orvo::sim

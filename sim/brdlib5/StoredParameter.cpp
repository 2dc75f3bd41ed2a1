#include "sim/brdlib5/StoredParameter.h"

#include "sim/brdlib5/BrdError.h"

namespace orvo::sim {

Value StoredParameter::get(uint32_t dma) const
{
    const std::lock_guard lock(m_mutex);
    const auto found = m_written.find(dma);
    return found == m_written.end() ? m_description.value : found->second;
}

void StoredParameter::set(uint32_t dma, const Value& value)
{
    if (!m_description.takes(value))
        throw BrdError(kOutOfRange, m_description.name + " can't be " + textOf(value));
    const std::lock_guard lock(m_mutex);
    m_written[dma] = value;
}

}   // namespace orvo::sim

#include "sim/brdlib5/Pacer.h"

#include <algorithm>

namespace orvo::sim {

namespace {

std::chrono::nanoseconds nanoseconds(double count)
{
    return std::chrono::nanoseconds(static_cast<int64_t>(count));
}

}   // namespace

Pacer::Pacer(double rate, const PictureFaults& faults, Clock::time_point start)
    : m_periodNs(rate > 0 ? 1e9 / rate : 0),
      m_jitter(faults.jitter),
      m_random(faults.seed),
      m_first(start + std::max<std::chrono::nanoseconds>(nanoseconds(m_periodNs), kFirstExposure)),
      m_due(m_first + nextJitter())
{}

void Pacer::advance()
{
    ++m_picture;
    m_due = m_first + nanoseconds(static_cast<double>(m_picture) * m_periodNs) + nextJitter();
}

std::chrono::nanoseconds Pacer::nextJitter()
{
    const auto range = static_cast<uint64_t>(m_jitter.count());
    return std::chrono::nanoseconds(range ? static_cast<int64_t>(m_random() % range) : 0);
}

}   // namespace orvo::sim

#include "tests/sim/PictureRecorder.h"

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

BrdApcControl PictureRecorder::control()
{
    return {0, &PictureRecorder::onPicture, this, 0x7fffffff, 32};
}

std::vector<int64_t> PictureRecorder::numbers() const
{
    const std::lock_guard lock(m_mutex);
    return m_numbers;
}

bool PictureRecorder::waitFor(size_t count)
{
    std::unique_lock lock(m_mutex);
    return m_came.wait_for(lock, std::chrono::milliseconds(kGenerousMs),
                           [&] { return m_numbers.size() >= count; });
}

int32_t PictureRecorder::onPicture(int64_t number, void* data)
{
    auto* const self = static_cast<PictureRecorder*>(data);
    {
        const std::lock_guard lock(self->m_mutex);
        self->m_numbers.push_back(number);
        self->m_came.notify_all();
    }
    if (self->m_inside)
        self->m_inside(number);
    return 0;
}

}   // namespace orvo::test

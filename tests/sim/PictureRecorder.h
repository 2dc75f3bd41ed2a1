#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

#include "sim/brdlib5/brdlib5.h"

namespace orvo::test {

/// The far end of an image callback: keeps the numbers, and does what a test wants done inside.
class PictureRecorder {
public:
    /// `inside` runs within each callback, after its number was kept.
    explicit PictureRecorder(std::function<void(int64_t)> inside = {}) : m_inside(std::move(inside)) {}

    BrdApcControl control();
    std::vector<int64_t> numbers() const;
    /// Waits for so many callbacks to have begun. False after a time that only a failure takes.
    bool waitFor(size_t count);

private:
    static int32_t onPicture(int64_t number, void* data);

    const std::function<void(int64_t)> m_inside;
    mutable std::mutex m_mutex;
    std::condition_variable m_came;
    std::vector<int64_t> m_numbers;
};

}   // namespace orvo::test

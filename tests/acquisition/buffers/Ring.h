#pragma once

#include <cstdint>
#include <memory>
#include <thread>
#include <vector>

#include <boost/thread/latch.hpp>
#include <gtest/gtest.h>

#include "acquisition/buffers/Buffer.h"
#include "acquisition/buffers/BufferCoordinator.h"

namespace orvo::test {

using Numbers = std::vector<int64_t>;

/// The buffers of a channel without a board: all free at first, and what is told to the board is kept.
class Ring : public testing::Test {
protected:
    using Buffer = cognex::Buffer;

    void ringOf(int64_t count)
    {
        cognex::BufferAccess access = coordinator->lock();
        cognex::BufferQueue& queue = access.freeQueue();
        for (int64_t number = 0; number < count; ++number) {
            ring.push_back(std::make_shared<Buffer>(4));
            ring.back()->setNumber(number);
            ring.back()->setUnblockCallback([this, &queue](Buffer* buffer) {
                givenBack.push_back(buffer->number());
                wasToldBeforeTheQueue = queue.isEmpty();
            });
            queue.push(ring.back());
        }
    }

    // Where the buffers are: their numbers, oldest first, -1 for one that has gone, or for none.
    Numbers free() { return numbersIn(coordinator->lock().freeQueue()); }
    Numbers ready() { return numbersIn(coordinator->lock().readyQueue()); }
    int64_t current() { return numberOf(coordinator->lock().currentBuffer()); }

    static constexpr cognex::Ticks kGenerous = boost::chrono::seconds(60);

    std::shared_ptr<cognex::BufferCoordinator> coordinator = std::make_shared<cognex::BufferCoordinator>();
    /// By number. Reset one, and it has gone, as with a ring that is rebuilt.
    std::vector<std::shared_ptr<Buffer>> ring;
    /// The buffers that went back to the board, in that order.
    Numbers givenBack;
    /// Whether no buffer was free when the board was told of the latest.
    bool wasToldBeforeTheQueue = false;

private:
    static int64_t numberOf(const std::weak_ptr<Buffer>& buffer)
    {
        const auto owned = buffer.lock();
        return owned ? owned->number() : -1;
    }

    static Numbers numbersIn(cognex::BufferQueue queue)
    {
        Numbers numbers;
        while (!queue.isEmpty())
            numbers.push_back(numberOf(queue.popFront()));
        return numbers;
    }
};

/// Another thread that holds the lock of a coordinator as long as this lives.
class LockHolder {
public:
    explicit LockHolder(cognex::BufferCoordinator& coordinator)
        : m_thread([this, &coordinator] {
              const auto access = coordinator.lock();
              m_held.count_down();
              m_end.wait();
          })
    {
        m_held.wait();
    }
    LockHolder(const LockHolder&) = delete;
    LockHolder& operator=(const LockHolder&) = delete;
    ~LockHolder()   // NOLINT(bugprone-exception-escape): whatever fails here fails the test
    {
        m_end.count_down();
        m_thread.join();
    }

private:
    boost::latch m_held{1};
    boost::latch m_end{1};
    std::thread m_thread;
};

}   // namespace orvo::test

#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include <gtest/gtest.h>

#include "acquisition/buffers/Buffer.h"
#include "acquisition/buffers/BufferCoordinator.h"

namespace orvo::test {

using Numbers = std::vector<int64_t>;

/// The buffers of a channel that has no board: all are free at first. Keeps what a board would be told.
class ChannelBuffers : public testing::Test {
protected:
    using Buffer = cognex::Buffer;

    void ringOf(int64_t count)
    {
        auto access = coordinator->lock();
        auto* const queue = &access.freeQueue();   // lives as long as the coordinator
        for (int64_t number = 0; number < count; ++number) {
            ring.push_back(std::make_shared<Buffer>(4));
            ring.back()->setNumber(number);
            ring.back()->setUnblockCallback([this, queue](Buffer* buffer) {
                givenBack.push_back(buffer->number());
                freeWhenTold = numbersIn(*queue);
            });
            queue->push(ring.back());
        }
    }

    // The numbers of the buffers, oldest first; -1 stands for one that is gone.
    Numbers free() { return numbersIn(coordinator->lock().freeQueue()); }
    Numbers ready() { return numbersIn(coordinator->lock().readyQueue()); }

    static constexpr cognex::Ticks kGenerous = std::chrono::seconds(60);

    std::shared_ptr<cognex::BufferCoordinator> coordinator = std::make_shared<cognex::BufferCoordinator>();
    /// By number. A buffer that is reset is gone, as after a rebuild of the ring.
    std::vector<std::shared_ptr<Buffer>> ring;
    /// The buffers that went back to the board, in that order.
    Numbers givenBack;
    /// Which buffers were free when the board was told of the latest.
    Numbers freeWhenTold;

private:
    static Numbers numbersIn(cognex::BufferQueue queue)
    {
        Numbers numbers;
        while (!queue.isEmpty()) {
            const auto buffer = queue.popFront().lock();
            numbers.push_back(buffer ? buffer->number() : -1);
        }
        return numbers;
    }
};

}   // namespace orvo::test

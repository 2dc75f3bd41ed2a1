#pragma once

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

/// What the adapter is compared with, beside what the C++ library has: one header, one source per platform.
namespace orvo::bench {

/// Something that hands pictures from one thread to another: give() is called on the delivering thread, take()
/// on the other, and returns when a picture was there. They pass one at a time.
struct HandOff {
    std::string name;
    std::function<void()> give;
    std::function<void()> take;
};

/// The bare primitives of the platform first.
std::vector<HandOff> handOffPeers();

/// Splits packed pixels of three bytes, blue first, into the planes red, green, blue.
struct Split {
    std::string name;
    std::function<void(uint8_t* planes, const uint8_t* packed, size_t pixels)> run;
};

std::vector<Split> splitPeers();

/// Pictures that come to the calling thread from a source which does next to nothing.
struct Flow {
    std::string name;
    std::function<void(uint64_t pictures)> pass;
};

std::vector<Flow> flowPeers(uint32_t side);

/// A hand-off over any lock and any condition: a count under the lock, and the condition for when it is 0.
template <typename Lock, typename Condition>
HandOff handOffOver(const std::string& name)
{
    struct State {
        Lock lock;
        Condition condition;
        int count = 0;
    };
    const auto state = std::make_shared<State>();
    const auto give = [state] {
        state->lock.lock();
        ++state->count;
        state->lock.unlock();
        state->condition.notifyOne();
    };
    const auto take = [state] {
        state->lock.lock();
        while (state->count == 0)
            state->condition.wait(state->lock);
        --state->count;
        state->lock.unlock();
    };
    return {name, give, take};
}

/// std::condition_variable, with a std::mutex that the caller has locked.
class StandardCondition {
public:
    void notifyOne() { m_condition.notify_one(); }
    void wait(std::mutex& mutex)
    {
        std::unique_lock<std::mutex> lock(mutex, std::adopt_lock);
        m_condition.wait(lock);
        lock.release();
    }

private:
    std::condition_variable m_condition;
};

}   // namespace orvo::bench

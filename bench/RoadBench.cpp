// The whole way of a picture through the exports, and how many a second pass.

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstring>
#include <exception>
#include <limits>
#include <stdexcept>
#include <thread>

#include "bench/harness/Adapter.h"
#include "bench/harness/Harness.h"
#include "bench/peers/Peers.h"
#include "os/TimedLock.h"

namespace orvo::bench {

namespace {

using Image = std::vector<uint8_t>;

constexpr uint32_t kSmallSide = 8;
constexpr uint32_t kManyChannels = 16;

Image imageOf(uint32_t side)
{
    return Image(size_t{side} * side * AIK_MAX_BYTES_PER_PIXEL);
}

/// Callback and host on one thread: what the adapter itself costs, without a wake-up.
void oneThread(Report& report, const Adapter& adapter, uint32_t side)
{
    const RunningChannels channels(adapter, 1, side);
    Image image = imageOf(side);
    const auto contender = [&](const char* name, const std::function<void()>& step) -> Contender {
        return {name, [&report, step](Samples& samples) {
                    for (uint64_t i = report.scaled(2000); i > 0; --i)
                        samples.addMean(1, step);
                }};
    };
    const auto fetch = [&] {
        channels.deliver(0);
        channels.fetch(0, image.data());
    };
    const auto all = [&] {
        channels.deliver(0);
        channels.wait(0);
        channels.attributes(0);
        channels.fetch(0, image.data());
    };
    const std::string size = std::to_string(side) + "x" + std::to_string(side);
    std::vector<Contender> contenders{contender("callback, GetImage", fetch),
                                      contender("callback, wait, attributes, GetImage", all)};
    // They copy nothing, so only a small picture compares.
    for (const Flow& flow : side == kSmallSide ? flowPeers(side) : std::vector<Flow>())
        contenders.push_back({flow.name, [&report, flow](Samples& samples) {
                                  const uint64_t pictures = report.scaled(2000);
                                  const uint64_t begin = clockNanoseconds();
                                  flow.pass(pictures);
                                  samples.add(static_cast<double>(clockNanoseconds() - begin) /
                                                  static_cast<double>(pictures),
                                              pictures);
                              }});
    report.compare("one thread " + size, contenders);
}

/// The threads of one flow. They begin together: on some systems a thread takes longer to start than many pictures.
class Together {
public:
    explicit Together(uint32_t count) : m_missing(count) {}

    void begin()
    {
        --m_missing;
        while (m_missing > 0)
            std::this_thread::yield();
    }

private:
    std::atomic<uint32_t> m_missing;
};

/// Where a delivering thread sleeps while no block is free. It hears of every fifth picture that is fetched: the
/// ring has five blocks, so one of those that it waits for is among them.
class FreeBlocks {
public:
    template <typename Deliver>
    void deliver(Deliver&& deliver) ORVO_NO_THREAD_SAFETY_ANALYSIS
    {
        while (!deliver()) {
            m_lock.lock();
            const bool isDelivered = deliver();
            if (!isDelivered)
                m_lock.waitUntil(std::chrono::steady_clock::now() + std::chrono::seconds(1));
            m_lock.unlock();
            if (isDelivered)
                return;
        }
    }
    void fetched(uint64_t count)
    {
        if (count % 5 != 0)
            return;
        m_lock.lock();
        m_lock.unlockAndWakeOne();
    }

private:
    os::TimedLock m_lock;
};

struct Picture {
    uint64_t delivered = 0;
    uint64_t fetched = 0;
};

/// Each of the first `count` channels has a thread that delivers and one that fetches. Each picture carries the time
/// of its delivery. With `oneAtATime` the next picture is delivered when the last one was fetched, otherwise as soon
/// as a block is free. Returns, per channel, when each picture was delivered and fetched.
std::vector<std::vector<Picture>> flow(const RunningChannels& channels, uint32_t count, uint64_t pictures,
                                       bool oneAtATime)
{
    std::atomic<bool> failed{false};
    std::array<std::atomic<uint64_t>, kManyChannels> fetched{};
    std::array<FreeBlocks, kManyChannels> freeBlocks;
    std::vector<std::vector<Picture>> times(count);
    std::vector<std::thread> threads;
    Together together(2 * count);
    for (uint32_t channel = 0; channel < count; ++channel) {
        times[channel].reserve(pictures);
        threads.emplace_back([&, channel] {
            together.begin();
            for (uint64_t i = 0; i < pictures && !failed; ++i) {
                while (oneAtATime && fetched[channel] < i && !failed)
                    std::this_thread::yield();
                freeBlocks[channel].deliver(
                    [&] { return failed || channels.deliver(channel, clockNanoseconds()); });
            }
        });
        threads.emplace_back([&, channel] {
            try {
                Image image = imageOf(kSmallSide);
                together.begin();
                for (uint64_t i = 0; i < pictures && !failed; ++i) {
                    channels.fetch(channel, image.data());
                    Picture& picture = times[channel].emplace_back();
                    std::memcpy(&picture.delivered, image.data(), sizeof picture.delivered);
                    picture.fetched = clockNanoseconds();
                    freeBlocks[channel].fetched(++fetched[channel]);
                }
            } catch (const std::exception&) {
                failed = true;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    if (failed)
        throw std::runtime_error("A call has failed while pictures flowed");
    return times;
}

void manyThreads(Report& report, const Adapter& adapter)
{
    const RunningChannels channels(adapter, kManyChannels, kSmallSide, "OldestFirst");   // skips no picture
    const auto contenders = [&](std::initializer_list<uint32_t> counts, auto round) {
        std::vector<Contender> all;
        for (const uint32_t count : counts)
            all.push_back({std::to_string(count) + " channels",
                           [round, count](Samples& samples) { round(count, samples); }});
        return all;
    };
    const auto eachPicture = [&](uint32_t count, Samples& samples) {
        for (const auto& ofChannel : flow(channels, count, report.scaled(1000) / count + 1, true))
            for (const Picture& picture : ofChannel)
                samples.add(static_cast<double>(picture.fetched - picture.delivered));
    };
    const auto allPictures = [&](uint32_t count, Samples& samples) {
        const uint64_t pictures = report.scaled(8000) / count + 1;
        uint64_t begin = std::numeric_limits<uint64_t>::max();
        uint64_t end = 0;
        for (const auto& ofChannel : flow(channels, count, pictures, false)) {
            begin = std::min(begin, ofChannel.front().delivered);
            end = std::max(end, ofChannel.back().fetched);
        }
        const uint64_t total = count * pictures;
        samples.add(static_cast<double>(end - begin) / static_cast<double>(total), total);
    };
    report.compare("delivered to fetched, two threads", contenders({1, 4, kManyChannels}, eachPicture));
    report.compare("time per picture, as fast as it goes", contenders({2, 1, 4, kManyChannels}, allPictures));
}

}   // namespace

void bench(Report& report)
{
    const Adapter adapter;
    for (const uint32_t side : {kSmallSide, 640U})
        oneThread(report, adapter, side);
    manyThreads(report, adapter);
}

}   // namespace orvo::bench

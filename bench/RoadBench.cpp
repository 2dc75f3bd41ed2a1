// The whole way of a picture through the exports, and how many a second pass.

#include <atomic>
#include <exception>
#include <thread>

#include "bench/harness/Adapter.h"
#include "bench/harness/Harness.h"

namespace orvo::bench {

namespace {

using Image = std::vector<uint8_t>;

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
    report.compare("one thread " + size, {contender("callback, GetImage", fetch),
                                          contender("callback, wait, attributes, GetImage", all)});
}

/// Each channel has a thread that delivers as fast as blocks come free, and one that fetches.
void flow(const RunningChannels& channels, uint32_t count, uint64_t pictures, uint32_t side, Samples& samples)
{
    std::atomic<bool> failed{false};
    std::vector<std::thread> threads;
    const uint64_t begin = clockNanoseconds();
    for (uint32_t channel = 0; channel < count; ++channel) {
        threads.emplace_back([&, channel] {
            for (uint64_t i = 0; i < pictures && !failed;) {
                if (channels.deliver(channel))
                    ++i;
                else
                    std::this_thread::yield();
            }
        });
        threads.emplace_back([&, channel] {
            try {
                Image image = imageOf(side);
                for (uint64_t i = 0; i < pictures && !failed; ++i)
                    channels.fetch(channel, image.data());
            } catch (const std::exception&) {
                failed = true;
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    if (failed)
        throw std::runtime_error("A call has failed while pictures flowed");
    const auto operations = static_cast<double>(count * pictures);
    samples.add(static_cast<double>(clockNanoseconds() - begin) / operations, count * pictures);
}

void manyThreads(Report& report, const Adapter& adapter)
{
    constexpr uint32_t kSide = 8;
    constexpr uint32_t kMost = 16;
    constexpr uint64_t kPictures = 8000;
    const RunningChannels channels(adapter, kMost, kSide, "OldestFirst");   // no picture may be passed over
    std::vector<Contender> contenders;
    for (const uint32_t count : {2U, 1U, 4U, kMost})
        contenders.push_back(
            {std::to_string(count) + " channels", [&channels, &report, count](Samples& samples) {
                 flow(channels, count, report.scaled(kPictures) / count + 1, kSide, samples);
             }});
    report.compare("time per picture, all channels", contenders);
}

}   // namespace

void bench(Report& report)
{
    const Adapter adapter;
    for (const uint32_t side : {8U, 640U})
        oneThread(report, adapter, side);
    manyThreads(report, adapter);
}

}   // namespace orvo::bench

// From the call of the delivering thread until a thread that waits has its picture.

#include <atomic>
#include <exception>
#include <thread>

#include "bench/harness/Adapter.h"
#include "bench/harness/Harness.h"
#include "bench/peers/Peers.h"

namespace orvo::bench {

namespace {

constexpr uint32_t kSide = 8;           // the copy has a bench of its own
constexpr uint64_t kSettle = 200'000;   // nanoseconds until the taking thread surely sleeps

/// One round: a thread takes `count` pictures, each given only when it has long been waiting.
void pass(const HandOff& handOff, uint64_t count, Samples& samples)
{
    std::atomic<uint64_t> waitingFor{0};   // the picture for which the taking thread waits, from 1
    std::vector<uint64_t> given(count);
    std::vector<uint64_t> taken(count);
    std::exception_ptr failure;
    std::thread taking([&] {
        try {
            for (uint64_t i = 0; i < count; ++i) {
                waitingFor = i + 1;
                handOff.take();
                taken[i] = clockNanoseconds();
            }
        } catch (const std::exception&) {
            failure = std::current_exception();
            waitingFor = count;
        }
    });
    for (uint64_t i = 0; i < count; ++i) {
        while (waitingFor < i + 1)
            std::this_thread::yield();
        const uint64_t begin = clockNanoseconds();
        do
            given[i] = clockNanoseconds();
        while (given[i] - begin < kSettle);
        handOff.give();
    }
    taking.join();
    if (failure)
        std::rethrow_exception(failure);
    for (uint64_t i = 0; i < count; ++i)
        samples.add(static_cast<double>(taken[i] - given[i]));
}

}   // namespace

void bench(Report& report)
{
    const Adapter adapter;
    const RunningChannels channels(adapter, 1, kSide);
    std::vector<uint8_t> image(size_t{kSide} * kSide * AIK_MAX_BYTES_PER_PIXEL);
    const auto give = [&] { channels.deliver(0); };

    std::vector<HandOff> all = handOffPeers();
    all.push_back({"GetImage", give, [&] { channels.fetch(0, image.data()); }});
    all.push_back({"WaitForIntegration, GetImage", give, [&] {
                       channels.wait(0);
                       channels.fetch(0, image.data());
                   }});
    std::vector<Contender> contenders;
    contenders.reserve(all.size());
    for (const HandOff& handOff : all)
        contenders.push_back({handOff.name, [&report, handOff](Samples& samples) {
                                  pass(handOff, report.scaled(200), samples);
                              }});
    report.compare("hand-off to a waiting thread", contenders);
}

}   // namespace orvo::bench

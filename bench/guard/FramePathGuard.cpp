// Does some steps of each guarded case on one thread. Prints how many steps that were, and how many blocks a step
// takes from the heap. A tool that counts instructions finds each case as a function of its own: guard_<case>.
// check.sh runs it.

#include <array>
#include <cstdio>
#include <exception>

#include "bench/harness/Adapter.h"
#include "bench/harness/Machine.h"

using namespace orvo::bench;

namespace {

constexpr uint32_t kSide = 8;
constexpr int kWarmUpSteps = 3;
constexpr int kSteps = 1000;
constexpr int kSlowSteps = 20;   // each waits for milliseconds

}   // namespace

/// Not in the anonymous namespace: its functions shall keep their names.
struct Guarded {
    Adapter adapter;
    RunningChannels channels{adapter, 1, kSide};
    std::array<uint8_t, size_t{kSide} * kSide * AIK_MAX_BYTES_PER_PIXEL> image{};
    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    std::array<char, AIK_VALUE_SIZE> value{};
    uint32_t type = 0;
};

// X(case, steps)
#define ORVO_GUARDED_CASES(X)                                                                                \
    X(fetch, kSteps)                                                                                         \
    X(waitAttributesFetch, kSteps)                                                                           \
    X(waitInVain, kSlowSteps)                                                                                \
    X(exportWithLoggingOff, kSteps)                                                                          \
    X(readFeature, kSteps)                                                                                   \
    X(writeFeature, kSteps)

extern "C" {

#define ORVO_DECLARE(name, steps) [[gnu::noinline]] void guard_##name(Guarded& guarded, int count);
ORVO_GUARDED_CASES(ORVO_DECLARE)
#undef ORVO_DECLARE

void guard_fetch(Guarded& guarded, int count)
{
    for (int i = 0; i < count; ++i) {
        guarded.channels.deliver(0);
        guarded.channels.fetch(0, guarded.image.data());
    }
}

void guard_waitAttributesFetch(Guarded& guarded, int count)
{
    for (int i = 0; i < count; ++i) {
        guarded.channels.deliver(0);
        guarded.channels.wait(0);
        guarded.channels.attributes(0);
        guarded.channels.fetch(0, guarded.image.data());
    }
}

void guard_waitInVain(Guarded& guarded, int count)
{
    uint32_t result = AIK_ACQ_COMPLETED;
    for (int i = 0; i < count; ++i)
        check(guarded.adapter.GetImage(guarded.errstr.data(), guarded.channels.id(0), guarded.image.data(),
                                       &result),
              guarded.errstr.data());
}

void guard_exportWithLoggingOff(Guarded& guarded, int count)
{
    for (int i = 0; i < count; ++i)
        check(guarded.adapter.GetFeatureType(guarded.errstr.data(), guarded.channels.id(0), "BufferCount",
                                             &guarded.type),
              guarded.errstr.data());
}

void guard_readFeature(Guarded& guarded, int count)
{
    for (int i = 0; i < count; ++i)
        check(guarded.adapter.ReadValue(guarded.errstr.data(), guarded.channels.id(0), "BufferCount",
                                        guarded.value.data()),
              guarded.errstr.data());
}

void guard_writeFeature(Guarded& guarded, int count)
{
    for (int i = 0; i < count; ++i)
        check(guarded.adapter.WriteValue(guarded.errstr.data(), guarded.channels.id(0), "BrdFeatureKey",
                                         "Width"),
              guarded.errstr.data());
}

}   // extern "C"

namespace {

constexpr struct {
    const char* name;
    void (*run)(Guarded& guarded, int count);
    int steps;
} kCases[] = {
#define ORVO_ROW(name, steps) {#name, guard_##name, steps},
    ORVO_GUARDED_CASES(ORVO_ROW)
#undef ORVO_ROW
};

}   // namespace

int main()
try {
    Guarded guarded;
    for (const auto& row : kCases) {
        row.run(guarded, kWarmUpSteps);
        uint64_t allocations = 0;
        {
            const AllocationCount count;
            row.run(guarded, row.steps);
            allocations = count.soFar();
        }
        std::printf("%s %d %.2f\n", row.name, kWarmUpSteps + row.steps,
                    static_cast<double>(allocations) / row.steps);
    }
    return 0;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
    return 1;
}

// What logging costs: off, which is what a host pays at every call, and on.

#include <array>

#include "CallFrame.h"
#include "bench/board/BenchDispatcher.h"
#include "bench/harness/Adapter.h"
#include "bench/harness/Harness.h"

namespace orvo::bench {

namespace {

constexpr uint64_t kTimes = 5000;

/// The same body with the frame of an export around it, and without.
void compareFrame(Report& report)
{
    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    int32_t calls = 0;
    const auto body = [&] {
        ++calls;
        keep(&calls);
    };
    cognex::LogWrap::createInstance();
    report.compare(
        "frame of an export, logging off",
        {{"the call alone", [&](Samples& samples) { samples.addMean(report.scaled(kTimes), body); }},
         {"the call in its frame", [&](Samples& samples) {
              samples.addMean(report.scaled(kTimes), [&] {
                  cognex::callFrame({"Bench", errstr.data()}, body);
              });
          }}});
    cognex::LogWrap::destroyInstance();
}

void compareLevels(Report& report, const Adapter& adapter)
{
    const std::vector<int64_t> ids = openChannels(adapter, 1);
    const auto setLevel =
        adapter.find<SetLevelFunction>("common-logging-dispatcher", "BenchDispatcher_setLevel");
    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    uint32_t type = 0;
    const auto atLevel = [&](const char* name, int32_t level) -> Contender {
        return {name, [&, level](Samples& samples) {
                    setLevel(level);
                    samples.addMean(report.scaled(kTimes), [&] {
                        check(adapter.GetFeatureType(errstr.data(), ids[0], "BufferCount", &type),
                              errstr.data());
                    });
                    setLevel(tools::logging::kOff);
                }};
    };
    report.compare("GetFeatureType with its two records",
                   {atLevel("off", tools::logging::kOff), atLevel("on", tools::logging::kTrace)});
    closeChannels(adapter, ids);
}

}   // namespace

void bench(Report& report)
{
    compareFrame(report);
    const Adapter adapter;
    compareLevels(report, adapter);
}

}   // namespace orvo::bench

// Opening all channels of a board and closing them, as the time of one channel.

#include "bench/harness/Adapter.h"
#include "bench/harness/Harness.h"

namespace orvo::bench {

void bench(Report& report)
{
    const Adapter adapter;
    std::vector<Contender> contenders;
    for (const uint32_t count : {8U, 1U, 16U, 64U, 128U})
        contenders.push_back({std::to_string(count) + " channels", [&adapter, count](Samples& samples) {
                                  const uint64_t begin = clockNanoseconds();
                                  closeChannels(adapter, openChannels(adapter, count));
                                  samples.add(static_cast<double>(clockNanoseconds() - begin) / count, count);
                              }});
    report.compare("open and close, a channel", contenders, 50);
}

}   // namespace orvo::bench

// Reading and writing features.

#include <array>

#include "bench/harness/Adapter.h"
#include "bench/harness/Harness.h"

namespace orvo::bench {

void bench(Report& report)
{
    const Adapter adapter;
    const std::vector<int64_t> ids = openChannels(adapter, 1);
    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    std::array<char, AIK_VALUE_SIZE> value{};
    const auto read = [&](const char* feature) -> Contender {
        return {feature, [&, feature](Samples& samples) {
                    samples.addMean(report.scaled(5000), [&] {
                        check(adapter.ReadValue(errstr.data(), ids[0], feature, value.data()), errstr.data());
                    });
                }};
    };
    const auto write = [&](const char* feature, const char* text) -> Contender {
        return {feature, [&, feature, text](Samples& samples) {
                    samples.addMean(report.scaled(5000), [&] {
                        check(adapter.WriteValue(errstr.data(), ids[0], feature, text), errstr.data());
                    });
                }};
    };
    check(adapter.WriteValue(errstr.data(), ids[0], "BrdFeatureKey", "Width"), errstr.data());
    report.compare("read a feature", {read("BufferCount"), read("AcquisitionStrategy"), read("BrdFeatureKey"),
                                      read("BrdIntValue")});
    report.compare("write a feature", {write("BufferCount", "5"), write("AcquisitionStrategy", "OldestFirst"),
                                       write("BrdFeatureKey", "Width"), write("BrdIntValue", "64")});
    closeChannels(adapter, ids);
}

}   // namespace orvo::bench

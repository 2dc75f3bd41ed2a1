// How fast the simulated boards are themselves, beneath the same adapter.

#include <array>

#include "bench/harness/Adapter.h"
#include "bench/harness/Harness.h"
#include "sim/orvo_sim.h"

namespace orvo::bench {

namespace {

constexpr uint64_t kDefaultLines = 10'000;

}   // namespace

void bench(Report& report)
{
    const Adapter adapter("../../stage/bin");
    const auto deliver = adapter.find<OrvoSim_deliver_t>("orvo_sim", "OrvoSim_deliver");
    const auto limitJournal = adapter.find<OrvoSim_limitJournal_t>("orvo_sim", "OrvoSim_limitJournal");
    const auto clearJournal = adapter.find<OrvoSim_clearJournal_t>("orvo_sim", "OrvoSim_clearJournal");
    adapter.find<OrvoSim_setManual_t>("orvo_sim", "OrvoSim_setManual")(1);

    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    csAIK_ChannelRecord record{};
    record.size = sizeof record;
    check(adapter.GetVideoChannel(errstr.data(), 0, &record), errstr.data());
    csAIK_CommonParams params{};
    params.width = 64;
    params.height = 64;
    check(adapter.SetupCommonParams(errstr.data(), record.channelID, &params), errstr.data());
    check(adapter.StartAcquisition(errstr.data(), record.channelID), errstr.data());
    std::vector<uint8_t> image(size_t{64} * 64 * AIK_MAX_BYTES_PER_PIXEL);
    const auto withJournal = [&](const char* name, uint64_t lines) -> Contender {
        return {name, [&, lines](Samples& samples) {
                    limitJournal(lines);
                    clearJournal();
                    uint32_t result = 0;
                    samples.addMean(report.scaled(500), [&] {
                        deliver(0, 0, 1);
                        check(adapter.GetImage(errstr.data(), record.channelID, image.data(), &result),
                              errstr.data());
                    });
                }};
    };
    report.compare("simulated picture 64x64, fetched",
                   {withJournal("without journal", 0), withJournal("with journal", kDefaultLines)});
    check(adapter.ReleaseVideoChannel(errstr.data(), record.channelID), errstr.data());
}

}   // namespace orvo::bench

// The one copy of every picture, as it is and split into planes, against memcpy.

#include <algorithm>
#include <cstring>
#include <memory>

#include "acquisition/PixelTransformation.h"
#include "acquisition/buffers/Buffer.h"
#include "bench/harness/Harness.h"
#include "bench/peers/Peers.h"

using orvo::cognex::Buffer;

namespace orvo::bench {

namespace {

constexpr size_t kBeyondAnyCache = 256U << 20;
constexpr size_t kBytesOfARound = 96U << 20;

/// Pairs of a source and a destination. One pair stays in the caches; enough of them don't.
class Pairs {
public:
    Pairs(size_t size, size_t count) : m_size(size)
    {
        for (size_t i = 0; i < count; ++i) {
            m_sources.push_back(std::make_shared<Buffer>(size));
            std::memset(m_sources.back()->data(), static_cast<int>(i), size);
            m_destinations.emplace_back(size, uint8_t{1});   // touched, so that every page is there
        }
    }

    size_t size() const { return m_size; }
    void next() { m_current = (m_current + 1) % m_sources.size(); }
    const std::shared_ptr<Buffer>& source() const { return m_sources[m_current]; }
    const uint8_t* packed() const { return static_cast<const uint8_t*>(source()->data()); }
    uint8_t* destination() { return m_destinations[m_current].data(); }

private:
    size_t m_size;
    size_t m_current = 0;
    std::vector<std::shared_ptr<Buffer>> m_sources;
    std::vector<std::vector<uint8_t>> m_destinations;
};

void splitByPlainLoop(uint8_t* planes, const uint8_t* packed, size_t pixels)
{
    for (size_t i = 0; i < pixels; ++i) {
        planes[i] = packed[3 * i + 2];
        planes[pixels + i] = packed[3 * i + 1];
        planes[2 * pixels + i] = packed[3 * i];
    }
}

void compareAt(Report& report, const std::string& job, Pairs& pairs)
{
    const uint64_t times = std::clamp<uint64_t>(report.scaled(kBytesOfARound / pairs.size()), 1, 2000);
    std::vector<Contender> contenders;
    const auto add = [&](const std::string& name, const std::function<void()>& copy) {
        contenders.push_back({name, [&pairs, copy, times](Samples& samples) {
                                  samples.addMean(times, [&] {
                                      pairs.next();
                                      copy();
                                  });
                                  keep(pairs.destination());
                              }});
    };
    add("memcpy", [&pairs] { std::memcpy(pairs.destination(), pairs.packed(), pairs.size()); });
    for (const auto& row : cognex::transformations())
        add(row.name, [&pairs, transformation = row.make()] {
            transformation->transform(pairs.destination(), pairs.source());
        });
    std::vector<Split> splits = splitPeers();
    splits.push_back({"plain loop", splitByPlainLoop});
    for (const Split& split : splits)
        add(split.name,
            [&pairs, run = split.run] { run(pairs.destination(), pairs.packed(), pairs.size() / 3); });
    report.compare(job, contenders);
}

}   // namespace

void bench(Report& report)
{
    static constexpr struct {
        const char* name;
        size_t bytes;
    } kSizes[] = {{"12 KiB", size_t{64} * 64 * 3},
                  {"900 KiB (640x480)", size_t{640} * 480 * 3},
                  {"4 MiB", size_t{4} << 20},
                  {"36 MB (4000x3000)", size_t{4000} * 3000 * 3}};
    for (const auto& [name, bytes] : kSizes) {
        Pairs warm(bytes, 1);
        compareAt(report, std::string("copy warm ") + name, warm);
        if (report.isSmoke())
            return;
        Pairs cold(bytes, kBeyondAnyCache / bytes);
        compareAt(report, std::string("copy cold ") + name, cold);
    }
}

}   // namespace orvo::bench

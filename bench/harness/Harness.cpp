#include "bench/harness/Harness.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <stdexcept>

#include <nlohmann/json.hpp>

#include "bench/harness/Machine.h"

namespace orvo::bench {

namespace {

constexpr uint64_t kSmokePart = 100;
constexpr uint64_t kSmokeRounds = 2;
constexpr uint64_t kWarmUpRounds = 1;

const void* volatile g_kept = nullptr;

/// All rounds of one contender.
struct Course {
    std::vector<double> all;   // every sample
    std::vector<double> ratios;
    uint64_t operations = 0;
    double cpu = 0;
    double roundMedian = 0;   // of the present round
};

/// The value that this part of all does not exceed; 0 if there are too few to tell. Orders them.
double percentile(std::vector<double>& values, double part)
{
    const auto count = static_cast<double>(values.size());
    if (count * (1 - part) < 1)
        return 0;
    const auto place = static_cast<std::ptrdiff_t>(count * part);
    std::nth_element(values.begin(), values.begin() + place, values.end());
    return values[static_cast<size_t>(place)];
}

double median(std::vector<double>& values)
{
    if (values.size() == 1)
        return values.front();
    return percentile(values, 0.5);
}

void runRound(const Contender& contender, Course& course, bool isWarmUp)
{
    Samples samples;
    const double before = cpuNanoseconds();
    contender.round(samples);
    const double after = cpuNanoseconds();
    std::vector<double> values = samples.nanoseconds();
    course.roundMedian = median(values);
    if (isWarmUp)
        return;
    course.cpu += after - before;
    course.operations += samples.operations();
    course.all.insert(course.all.end(), values.begin(), values.end());
}

double allocationsOf(const Contender& contender)
{
    Samples samples;
    samples.reserve(1 << 20);
    const AllocationCount count;
    contender.round(samples);
    return static_cast<double>(count.soFar()) /
           static_cast<double>(std::max<uint64_t>(samples.operations(), 1));
}

std::string timeText(double nanoseconds)
{
    if (nanoseconds <= 0)
        return "-";
    static constexpr struct {
        double size;
        const char* name;
    } kUnits[] = {{1, "ns"}, {1e3, "us"}, {1e6, "ms"}};
    const auto* unit = &kUnits[0];
    for (const auto& candidate : kUnits)
        if (nanoseconds >= candidate.size)
            unit = &candidate;
    const double value = nanoseconds / unit->size;
    char text[32];
    std::snprintf(text, sizeof text, "%.*f %s", value < 10 ? 2 : value < 100 ? 1 : 0, value, unit->name);
    return text;
}

void print(const Row& row)
{
    std::printf("%-8s %-37s %-39s %10s %10s %10s %10s %7.1f %7.2f\n", kPlatform, row.job.c_str(),
                row.contender.c_str(), timeText(row.median).c_str(), timeText(row.percentile99).c_str(),
                timeText(row.percentile999).c_str(), timeText(row.cpu).c_str(), row.allocations, row.ratio);
    std::fflush(stdout);
}

}   // namespace

void Samples::add(double nanoseconds, uint64_t operations)
{
    m_nanoseconds.push_back(nanoseconds);
    m_operations += operations;
}

Report::Report(bool smoke) : m_smoke(smoke)
{
    std::printf("%-8s %-37s %-39s %10s %10s %10s %10s %7s %7s\n", "platform", "job", "contender", "median",
                "99 %", "99.9 %", "cpu", "allocs", "ratio");
}

uint64_t Report::scaled(uint64_t count) const
{
    return m_smoke ? std::max<uint64_t>(count / kSmokePart, 1) : count;
}

void Report::compare(const std::string& job, const std::vector<Contender>& contenders, uint64_t rounds)
{
    std::vector<Course> courses(contenders.size());
    const uint64_t count = kWarmUpRounds + (m_smoke ? kSmokeRounds : rounds);
    for (uint64_t round = 0; round < count; ++round) {
        const bool isWarmUp = round < kWarmUpRounds;
        for (size_t i = 0; i < contenders.size(); ++i) {
            const size_t turn = (i + round) % contenders.size();   // nobody always comes first
            runRound(contenders[turn], courses[turn], isWarmUp);
        }
        if (!isWarmUp)
            for (Course& course : courses)
                course.ratios.push_back(course.roundMedian / courses.front().roundMedian);
    }
    for (size_t i = 0; i < contenders.size(); ++i) {
        Course& course = courses[i];
        const double operations = static_cast<double>(std::max<uint64_t>(course.operations, 1));
        m_rows.push_back({.job = job,
                          .contender = contenders[i].name,
                          .median = median(course.all),
                          .percentile99 = percentile(course.all, 0.99),
                          .percentile999 = percentile(course.all, 0.999),
                          .cpu = course.cpu / operations,
                          .allocations = allocationsOf(contenders[i]),
                          .ratio = median(course.ratios)});
        print(m_rows.back());
    }
}

void Report::write(const std::string& path) const
{
    auto rows = nlohmann::json::array();
    for (const Row& row : m_rows)
        rows.push_back({{"job", row.job},
                        {"contender", row.contender},
                        {"medianNs", row.median},
                        {"percentile99Ns", row.percentile99},
                        {"percentile999Ns", row.percentile999},
                        {"cpuNs", row.cpu},
                        {"allocations", row.allocations},
                        {"ratio", row.ratio}});
    std::ofstream file(path);
    file << nlohmann::json{{"platform", kPlatform}, {"rows", rows}}.dump(2) << '\n';
    if (!file.flush())
        throw std::runtime_error("Cannot write " + path);
}

uint64_t clockNanoseconds()
{
    const auto time = std::chrono::steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(std::chrono::duration_cast<std::chrono::nanoseconds>(time).count());
}

void keep(const void* data)
{
    g_kept = data;
}

}   // namespace orvo::bench

#include "aikctl/grab/GrabAccount.h"

#include <algorithm>
#include <cmath>

namespace orvo::aikctl {

namespace {

// A longer interval than this many picture times misses a picture.
constexpr double kGap = 1.5;
// At a steady rate, so many of the intervals are whole picture times, give or take a quarter.
constexpr double kSteadyShare = 0.75;
constexpr double kSteadyDeviation = 0.25;
// Of fewer intervals all must be: with a trigger, most of a few often are by chance.
constexpr size_t kFewIntervals = 8;

// If more than a fifth of the pictures were lost and most of the rest skipped, nothing can be told.
constexpr double kMostMultiple = 1.25;

constexpr size_t kFewestIntervals = 2;   // one alone has nothing to be compared with

bool isSkipping(const GrabRecord& record)
{
    return record.strategy != "OldestFirst";
}

/// The number, by the adapter's count, of the first picture that was fetched. A strategy that had skipped some
/// before had its ring full.
uint64_t numberOfFirst(const GrabRecord& record)
{
    if (!isSkipping(record))
        return 1;
    const uint64_t mostWaiting =
        record.strategy == "NewestOnly" || record.buffers < 2 ? 1 : record.buffers - 1;
    return std::max(record.countedAtFirst, mostWaiting) + 1 - mostWaiting;
}

/// The same of the last picture that was fetched or drained. Every strategy keeps the newest one.
uint64_t numberOfLast(const GrabRecord& record)
{
    return record.isDrained ? record.counted : record.fetched + record.drained;
}

/// How many pictures reached the adapter from the first one with a time stamp on, up to the last one with one.
uint64_t arrivalsOf(const GrabRecord& record)
{
    const uint64_t first = record.numberOfFirstTimed();
    const uint64_t last = numberOfLast(record) - (record.fetched + record.drained - record.lastTimed);
    return last > first ? last - first : 0;
}

bool isSteady(const std::vector<double>& intervals, double period)
{
    const auto fitting = std::count_if(intervals.begin(), intervals.end(), [&](double interval) {
        const double times = interval / period;
        return std::round(times) >= 1 && std::abs(times - std::round(times)) <= kSteadyDeviation;
    });
    const double share = intervals.size() < kFewIntervals ? 1 : kSteadyShare;
    return static_cast<double>(fitting) >= share * static_cast<double>(intervals.size());
}

/// The time from one picture of the camera to the next, in ticks; none if there is no steady rate. The median is a
/// multiple of it where most intervals skip pictures. Which one, the count of arrivals tells, or nearly so: the
/// more pictures were lost, the fewer arrived.
std::optional<double> picturePeriod(const std::vector<double>& intervals, double median, double whole,
                                    uint64_t arrivals)
{
    const double least = std::max(1.0, std::round(median * static_cast<double>(arrivals) / whole));
    const auto last = static_cast<uint64_t>(kMostMultiple * least);
    for (auto multiple = static_cast<uint64_t>(least); multiple <= last; ++multiple)
        if (const double period = median / static_cast<double>(multiple); isSteady(intervals, period))
            return period;
    return std::nullopt;
}

}   // namespace

uint64_t GrabRecord::numberOfFirstTimed() const
{
    return numberOfFirst(*this) + firstTimed - 1;
}

void GrabRecord::addTimestamp(uint64_t picture, uint64_t timestamp)
{
    if (timestamps.empty())
        firstTimed = picture;
    lastTimed = picture;
    timestamps.push_back(timestamp);
}

GrabAccount GrabAccount::of(const GrabRecord& record)
{
    GrabAccount account{.counted = record.counted, .fetched = record.fetched};
    account.afterLast = record.counted - record.countedAtLast;
    const uint64_t unfetched = record.countedAtLast - record.fetched;
    // The ring gives the oldest first, so what it had more of than came after the last was there before. Where
    // the board has lost pictures under "OldestFirst", it can't be drained any more, and nothing is skipped.
    account.leftInRing = unfetched;
    if (record.isDrained)
        account.leftInRing = record.drained > account.afterLast ? record.drained - account.afterLast : 0;
    account.skipped = unfetched - account.leftInRing;
    return account;
}

GrabIntervals GrabIntervals::of(const GrabRecord& record)
{
    return since(0, arrivalsOf(record), record);
}

GrabIntervals GrabIntervals::since(size_t first, uint64_t arrivals, const GrabRecord& record)
{
    const std::span stamps = std::span(record.timestamps).subspan(first);
    GrabIntervals result;
    std::vector<double> intervals;
    for (size_t next = 1; next < stamps.size(); ++next)
        intervals.push_back(static_cast<double>(stamps[next]) - static_cast<double>(stamps[next - 1]));
    if (intervals.size() < kFewestIntervals)
        return result;
    result.areTooFew = false;
    std::vector<double> sorted = intervals;
    std::sort(sorted.begin(), sorted.end());
    if (sorted.front() <= 0)
        return result;   // no clock
    const auto seconds = [&](double ticks) {
        return record.ticksPerSecond == 0 ? 0.0 : ticks / static_cast<double>(record.ticksPerSecond);
    };
    result.medianSeconds = seconds(sorted[sorted.size() / 2]);
    result.p99Seconds = seconds(sorted[sorted.size() * 99 / 100]);
    result.longestSeconds = seconds(sorted.back());
    if (record.isTriggered)
        return result;

    const auto whole = static_cast<double>(stamps.back() - stamps.front());
    const auto period = picturePeriod(intervals, sorted[sorted.size() / 2], whole, arrivals);
    if (!period)
        return result;
    uint64_t missing = 0;
    for (const double interval : intervals) {
        if (interval < kGap * *period)
            continue;
        ++result.gaps;
        result.gapSeconds += seconds(interval);
        missing += static_cast<uint64_t>(std::llround(interval / *period)) - 1;
    }
    const uint64_t unseen = arrivals > intervals.size() ? arrivals - intervals.size() : 0;
    result.lost = missing > unseen ? missing - unseen : 0;
    return result;
}

}   // namespace orvo::aikctl

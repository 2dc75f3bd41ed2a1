#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace orvo::aikctl {

/// What a grab saw of a channel, from its start to after its stop. Counted: as the adapter's frame counter,
/// which starts at 0 with the acquisition and counts every picture that reaches the adapter.
struct GrabRecord {
    std::string strategy;               // as "AcquisitionStrategy" has it
    uint64_t buffers = 0;               // in the ring
    uint64_t ticksPerSecond = 0;        // of the time stamps; 0 if the board doesn't tell
    uint64_t countedAtFirst = 0;        // when the first picture was there
    uint64_t countedAtLast = 0;         // right after the last fetch
    uint64_t counted = 0;               // after the stop
    uint64_t fetched = 0;               // pictures
    uint64_t drained = 0;               // pictures that were fetched from the ring after the stop
    bool isTriggered = false;           // by commands, so that there is no steady rate
    bool isDrained = false;             // the ring was empty then
    uint64_t lostByOverflow = 0;        // what the board reported under "OldestFirst"
    std::vector<uint64_t> timestamps;   // in ticks, of fetched and then drained pictures, as far as told
    uint64_t firstTimed = 0;            // which of these pictures was the first with a time stamp, from 1,
    uint64_t lastTimed = 0;             // and which one the last

    uint64_t fetchedTimes = 0;   // how many of the time stamps are of fetched pictures

    /// Which of the counted pictures was the first with a time stamp, from 1.
    uint64_t numberOfFirstTimed() const;
    std::span<const uint64_t> fetchedTimestamps() const { return std::span(timestamps).first(fetchedTimes); }
    /// The next picture has this time stamp. `picture` counts fetched and drained ones, from 1.
    void addTimestamp(uint64_t picture, uint64_t timestamp);
};

/// Where the pictures are that reached the adapter: counted = fetched + skipped + leftInRing + afterLast.
struct GrabAccount {
    uint64_t counted = 0;
    uint64_t fetched = 0;
    uint64_t skipped = 0;      // given back to the board by the strategy
    uint64_t leftInRing = 0;   // there at the last fetch, and still at the stop
    uint64_t afterLast = 0;    // came after the last fetch

    static GrabAccount of(const GrabRecord& record);
};

/// What the intervals between time stamps say of pictures that come at a steady rate: how long they are, and how
/// many never reached the adapter.
struct GrabIntervals {
    double medianSeconds = 0;   // of the intervals; all three are 0 if there is no interval, or no frequency
    double p99Seconds = 0;      // 99 % of them are not longer
    double longestSeconds = 0;
    uint64_t gaps = 0;       // intervals in which a picture is missing: skipped, or never there
    double gapSeconds = 0;   // their length in all
    /// Lost on the line, or by the board for want of a block, between the first picture and the last. None if
    /// that can't be told: fewer than three pictures with a time stamp, or no steady rate.
    std::optional<uint64_t> lost;
    bool areTooFew = true;   // no two intervals can be compared

    static GrabIntervals of(const GrabRecord& record);
    /// Of the time stamps from this one on, the first being 0. `arrivals`: how many pictures reached the adapter
    /// after the first of them, up to the last.
    static GrabIntervals since(size_t first, uint64_t arrivals, const GrabRecord& record);
};

}   // namespace orvo::aikctl

#include "acquisition/buffers/Ticks.h"

#include <algorithm>

namespace orvo::cognex {

using boost::chrono::duration_cast;
using boost::chrono::system_clock;

Ticks now()
{
    return duration_cast<Ticks>(system_clock::now().time_since_epoch());
}

Ticks deadlineAfter(Ticks timeout)
{
    const Ticks start = now();
    return timeout > Ticks::max() - start ? Ticks::max() : start + timeout;
}

Ticks wrappingSum(Ticks a, Ticks b)
{
    return Ticks(static_cast<int64_t>(static_cast<uint64_t>(a.count()) + static_cast<uint64_t>(b.count())));
}

system_clock::time_point timePoint(Ticks sinceEpoch)
{
    const Ticks latest = duration_cast<Ticks>(system_clock::duration::max());
    // A time long past would be before the beginning of the clock that Boost waits by, and never come.
    const Ticks clamped = std::clamp(sinceEpoch, now(), latest);
    return system_clock::time_point(duration_cast<system_clock::duration>(clamped));
}

}   // namespace orvo::cognex

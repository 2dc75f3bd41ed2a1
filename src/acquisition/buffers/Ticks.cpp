#include "acquisition/buffers/Ticks.h"

#include <algorithm>

namespace orvo::cognex {

using std::chrono::duration_cast;
using std::chrono::steady_clock;

Ticks now()
{
    return duration_cast<Ticks>(steady_clock::now().time_since_epoch());
}

Ticks deadlineAfter(Ticks timeout)
{
    const Ticks start = now();
    return timeout > Ticks::max() - start ? Ticks::max() : start + timeout;
}

Ticks wrappingDeadlineAfter(Ticks timeout)
{
    return Ticks(
        static_cast<int64_t>(static_cast<uint64_t>(now().count()) + static_cast<uint64_t>(timeout.count())));
}

os::Deadline timePoint(Ticks sinceBeginning)
{
    const Ticks clamped =
        std::clamp(sinceBeginning, Ticks::zero(), duration_cast<Ticks>(os::Deadline::duration::max()));
    return os::Deadline(duration_cast<os::Deadline::duration>(clamped));
}

}   // namespace orvo::cognex

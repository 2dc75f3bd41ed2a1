#include <cstdint>

#include "sim/seam/Core.h"

/// The number of DMA ports, or a negative number. What is asked is always the first argument's question;
/// which board asks the arguments don't say, so the answer is that of the board whose file was asked for
/// last.
// The name is fixed by those who look for it. NOLINTNEXTLINE(readability-identifier-naming)
extern "C" int32_t Info(int64_t /*question*/, int64_t, int64_t, int64_t, int64_t)
{
    return orvo_sim_core()->appletInfo();
}

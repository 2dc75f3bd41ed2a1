#include "bench/harness/Machine.h"

namespace orvo::bench {

AllocationCount::AllocationCount() = default;

AllocationCount::~AllocationCount() =
    default;   // NOLINT(performance-trivially-destructible): not where it counts

uint64_t AllocationCount::soFar() const
{
    return 0;
}

void countAllocationsOf(void* /*library*/) {}

}   // namespace orvo::bench

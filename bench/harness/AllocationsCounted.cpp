#include <atomic>

#include "bench/harness/Machine.h"

namespace orvo::bench {

namespace {

std::atomic<bool> g_isCounting{false};
std::atomic<uint64_t> g_allocations{0};

}   // namespace

void countAllocation()
{
    if (g_isCounting.load(std::memory_order_relaxed))
        g_allocations.fetch_add(1, std::memory_order_relaxed);
}

AllocationCount::AllocationCount()
{
    g_allocations = 0;
    g_isCounting = true;
}

AllocationCount::~AllocationCount()
{
    g_isCounting = false;
}

uint64_t AllocationCount::soFar() const
{
    return g_allocations;
}

}   // namespace orvo::bench

// The program's own malloc, in front of that of the C library: all libraries of the process use it too.

#include <atomic>
#include <cstddef>

#include "bench/harness/Machine.h"

namespace {

std::atomic<bool> g_isCounting{false};
std::atomic<uint64_t> g_count{0};

void count()
{
    if (g_isCounting.load(std::memory_order_relaxed))
        g_count.fetch_add(1, std::memory_order_relaxed);
}

}   // namespace

extern "C" {

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t number, size_t size);
void* __libc_realloc(void* block, size_t size);

void* malloc(size_t size)
{
    count();
    return __libc_malloc(size);
}

void* calloc(size_t number, size_t size)
{
    count();
    return __libc_calloc(number, size);
}

void* realloc(void* block, size_t size)
{
    count();
    return __libc_realloc(block, size);
}

}   // extern "C"

namespace orvo::bench {

AllocationCount::AllocationCount()
{
    g_count = 0;
    g_isCounting = true;
}

AllocationCount::~AllocationCount()
{
    g_isCounting = false;
}

uint64_t AllocationCount::soFar() const
{
    return g_count;
}

void countAllocationsOf(void* /*library*/) {}

}   // namespace orvo::bench

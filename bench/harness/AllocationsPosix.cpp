// The program's own malloc, in front of that of the C library: all libraries of the process use it too.

#include <cstddef>

#include "bench/harness/Machine.h"

extern "C" {

void* __libc_malloc(size_t size);
void* __libc_calloc(size_t number, size_t size);
void* __libc_realloc(void* block, size_t size);

void* malloc(size_t size)
{
    orvo::bench::countAllocation();
    return __libc_malloc(size);
}

void* calloc(size_t number, size_t size)
{
    orvo::bench::countAllocation();
    return __libc_calloc(number, size);
}

void* realloc(void* block, size_t size)
{
    orvo::bench::countAllocation();
    return __libc_realloc(block, size);
}

}   // extern "C"

namespace orvo::bench {

void countAllocationsOf(void* /*library*/) {}

}   // namespace orvo::bench

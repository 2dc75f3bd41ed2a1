#pragma once

#include <cstdint>

/// What the harness asks the operating system: one header, two implementations, and a third source for builds
/// in which allocations cannot be counted.
namespace orvo::bench {

extern const char* const kPlatform;   // "linux" or "windows"

/// The CPU time of all threads of this process, in nanoseconds.
double cpuNanoseconds();

/// Counts the blocks that all threads take from the heap while it lives: those of the program and, on Windows,
/// of each library that countAllocationsOf() was told. One at a time. Under sanitizers it counts nothing.
class AllocationCount {
public:
    AllocationCount();
    AllocationCount(const AllocationCount&) = delete;
    AllocationCount& operator=(const AllocationCount&) = delete;
    ~AllocationCount();   // NOLINT(performance-trivially-destructible): where nothing is counted, it is

    uint64_t soFar() const;
};

/// Called for every block that is taken: by the heap's functions that stand in for the system's.
void countAllocation();

/// Has a loaded library counted too. On Linux every library is.
void countAllocationsOf(void* library);

}   // namespace orvo::bench

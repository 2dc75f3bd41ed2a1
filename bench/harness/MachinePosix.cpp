#include <ctime>

#include "bench/harness/Machine.h"

namespace orvo::bench {

const char* const kPlatform = "linux";

double cpuNanoseconds()
{
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

}   // namespace orvo::bench

#pragma once

#include <cstdint>

namespace orvo::cognex {

/// Throws AIKException with "brd error code: " and the number, in decimal.
[[noreturn]] void throwBrdError(int64_t number);

/// Throws for any `status` but 0.
inline void checkBrd(int32_t status)
{
    if (status != 0)
        throwBrdError(status);
}

}   // namespace orvo::cognex

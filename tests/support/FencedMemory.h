#pragma once

#include <cstddef>

namespace orvo::test {

/// Whole pages of memory between two that no access survives. Never given back: a test makes a few.
struct FencedMemory {
    explicit FencedMemory(size_t leastBytes);

    unsigned char* begin = nullptr;
    unsigned char* end = nullptr;
};

}   // namespace orvo::test

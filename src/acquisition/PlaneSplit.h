#pragma once

#include <cstddef>

namespace orvo::cognex {

/// Splits `pixels` packed pixels of three bytes into three planes, one after the other, without gaps, the third
/// byte's plane first. Reads and writes nothing outside the 3 * `pixels` bytes of each; the two must not overlap.
/// Any thread. Uses the widest kernel that the processor has.
void splitIntoPlanes(unsigned char* planes, const unsigned char* packed, size_t pixels);

// The kernels, both with the same result.
using SplitKernel = void (*)(unsigned char* planes, const unsigned char* packed, size_t pixels);
void splitBySse2(unsigned char* planes, const unsigned char* packed, size_t pixels);
/// Where hasSsse3() only.
void splitBySsse3(unsigned char* planes, const unsigned char* packed, size_t pixels);
bool hasSsse3();

}   // namespace orvo::cognex

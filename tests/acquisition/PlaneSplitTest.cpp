#include "acquisition/PlaneSplit.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/FencedMemory.h"

namespace orvo::test {

namespace {

using Bytes = std::vector<unsigned char>;

constexpr size_t kMostPixels = 1500;
constexpr unsigned char kUntouched = 0xA5;

Bytes splitOneByOne(const unsigned char* packed, size_t pixels)
{
    Bytes planes(3 * pixels);
    for (size_t i = 0; i < 3 * pixels; ++i)
        planes[(2 - i % 3) * pixels + i / 3] = packed[i];
    return planes;
}

TEST(PlaneSplit, IsExactForEverySizeAndAlignmentUpToTheFence)
{
    const FencedMemory source(3 * kMostPixels + 7);
    const FencedMemory target(3 * kMostPixels + 7);
    for (unsigned char* byte = source.begin; byte != source.end; ++byte)
        *byte = static_cast<unsigned char>((byte - source.begin) * 131 / 7);

    const auto check = [&](cognex::SplitKernel split, size_t pixels, unsigned char* from, unsigned char* to) {
        std::fill(target.begin, target.end, kUntouched);
        split(to, from, pixels);
        const auto isUntouched = [](unsigned char byte) { return byte == kUntouched; };
        return Bytes(to, to + 3 * pixels) == splitOneByOne(from, pixels) &&
               std::all_of(target.begin, to, isUntouched) &&
               std::all_of(to + 3 * pixels, target.end, isUntouched);
    };
    std::vector<cognex::SplitKernel> kernels{cognex::splitIntoPlanes, cognex::splitBySse2};
    if (cognex::hasSsse3())
        kernels.push_back(cognex::splitBySsse3);
    for (const auto kernel : kernels)
        for (size_t pixels = 0; pixels <= kMostPixels; ++pixels) {
            const size_t size = 3 * pixels;
            ASSERT_TRUE(check(kernel, pixels, source.begin, target.begin)) << pixels;
            ASSERT_TRUE(check(kernel, pixels, source.begin + 5, target.end - size)) << pixels;
            ASSERT_TRUE(check(kernel, pixels, source.end - size, target.begin + 7)) << pixels;
        }
}

}   // namespace

}   // namespace orvo::test

#include "aikctl/pictures/PngFilter.h"

#include <algorithm>
#include <cstdlib>

namespace orvo::aikctl {

namespace {

// Written such that the compiler makes vectors of it: short numbers, and no branches.
struct None {
    static int16_t guess(int16_t, int16_t, int16_t) { return 0; }
};
struct Left {
    static int16_t guess(int16_t left, int16_t, int16_t) { return left; }
};
struct Above {
    static int16_t guess(int16_t, int16_t above, int16_t) { return above; }
};
struct Average {
    static int16_t guess(int16_t left, int16_t above, int16_t)
    {
        return static_cast<int16_t>((left + above) >> 1);
    }
};
// The neighbour that comes nearest to left + above - corner.
struct Paeth {
    static int16_t guess(int16_t left, int16_t above, int16_t corner)
    {
        const auto fromLeft = static_cast<int16_t>(above - corner);
        const auto fromAbove = static_cast<int16_t>(left - corner);
        const int16_t leftError = size(fromLeft);
        const int16_t aboveError = size(fromAbove);
        const int16_t cornerError = size(static_cast<int16_t>(fromLeft + fromAbove));
        const int16_t second = aboveError <= cornerError ? above : corner;
        return leftError <= std::min(aboveError, cornerError) ? left : second;
    }
    static int16_t size(int16_t number) { return static_cast<int16_t>(number < 0 ? -number : number); }
};

using Filter = void (*)(const uint8_t*, const uint8_t*, size_t, size_t, uint8_t*);

template <typename Rule>
void apply(const uint8_t* __restrict row, const uint8_t* __restrict above, size_t size, size_t pixelBytes,
           uint8_t* __restrict out)
{
    const uint8_t* const left = row - pixelBytes;
    const uint8_t* const corner = above - pixelBytes;
    for (size_t at = 0; at < size; ++at)
        out[at] = static_cast<uint8_t>(row[at] - Rule::guess(left[at], above[at], corner[at]));
}

constexpr Filter kFilters[] = {apply<None>, apply<Left>, apply<Above>, apply<Average>, apply<Paeth>};

}   // namespace

void filterRow(PngFilter filter, const uint8_t* row, const uint8_t* above, size_t size, size_t pixelBytes,
               uint8_t* out)
{
    kFilters[static_cast<size_t>(filter)](row, above, size, pixelBytes, out);
}

uint64_t distanceFromZero(const uint8_t* bytes, size_t size)
{
    uint64_t distance = 0;
    for (size_t at = 0; at < size; ++at)
        distance += static_cast<uint64_t>(std::abs(static_cast<int8_t>(bytes[at])));
    return distance;
}

}   // namespace orvo::aikctl

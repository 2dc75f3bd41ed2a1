#include "acquisition/PlaneSplit.h"

#include <algorithm>

#include <cpuid.h>
#include <immintrin.h>

namespace orvo::cognex {

namespace {

constexpr size_t kBlock = 16;   // pixels that the vector kernels split at a time: three registers

struct Registers {
    __m128i first;
    __m128i second;
    __m128i third;
};

Registers load(const unsigned char* packed)
{
    const auto* const from = reinterpret_cast<const __m128i_u*>(packed);
    return {_mm_loadu_si128(from), _mm_loadu_si128(from + 1), _mm_loadu_si128(from + 2)};
}

void store(unsigned char* to, __m128i bytes)
{
    _mm_storeu_si128(reinterpret_cast<__m128i_u*>(to), bytes);
}

/// 48 bytes as a pack of cards: the upper half is shuffled into the lower one. Four shuffles bring the bytes of
/// a plane, which lie three apart, side by side.
Registers shuffled(const Registers& bytes)
{
    const auto swap = [](__m128i b) { return _mm_shuffle_epi32(b, _MM_SHUFFLE(1, 0, 3, 2)); };
    return {_mm_unpacklo_epi8(bytes.first, swap(bytes.second)),
            _mm_unpacklo_epi8(swap(bytes.first), bytes.third),
            _mm_unpacklo_epi8(bytes.second, swap(bytes.third))};
}

/// The last pixels, from `begin`: fewer than a block.
void splitRest(unsigned char* planes, const unsigned char* packed, size_t pixels, size_t begin)
{
    for (size_t i = begin; i < pixels; ++i) {
        planes[i] = packed[3 * i + 2];
        planes[pixels + i] = packed[3 * i + 1];
        planes[2 * pixels + i] = packed[3 * i];
    }
}

/// The bytes `first`, `first` + 3, ... of 48 that lie in the given register, in their places of the plane;
/// elsewhere the shuffle writes 0.
template <int First, int Register>
[[gnu::target("ssse3")]] __m128i gathered(__m128i bytes)
{
    alignas(16) static constexpr auto kMask = [] {
        struct {
            signed char at[16];
        } mask{};
        for (int i = 0; i < 16; ++i) {
            const int byte = First + 3 * i - 16 * Register;
            mask.at[i] = static_cast<signed char>(byte >= 0 && byte < 16 ? byte : -1);
        }
        return mask;
    }();
    return _mm_shuffle_epi8(bytes, *reinterpret_cast<const __m128i*>(kMask.at));
}

/// The part of one plane that `pixels` give, a multiple of a block.
template <int First>
[[gnu::target("ssse3")]] void splitRun(unsigned char* plane, const unsigned char* packed, size_t pixels)
{
    for (size_t i = 0; i < pixels; i += kBlock) {
        const Registers bytes = load(packed + 3 * i);
        store(plane + i,
              _mm_or_si128(_mm_or_si128(gathered<First, 0>(bytes.first), gathered<First, 1>(bytes.second)),
                           gathered<First, 2>(bytes.third)));
    }
}

}   // namespace

void splitBySse2(unsigned char* planes, const unsigned char* packed, size_t pixels)
{
    size_t i = 0;
    for (; i + kBlock <= pixels; i += kBlock) {
        const Registers split = shuffled(shuffled(shuffled(shuffled(load(packed + 3 * i)))));
        store(planes + i, split.third);
        store(planes + pixels + i, split.second);
        store(planes + 2 * pixels + i, split.first);
    }
    splitRest(planes, packed, pixels, i);
}

[[gnu::target("ssse3")]] void splitBySsse3(unsigned char* planes, const unsigned char* packed, size_t pixels)
{
    // One plane at a time: memory takes a run of one plane faster than turns of three. The packed bytes of a run
    // stay in the first cache meanwhile.
    constexpr size_t kRun = 1024;
    const size_t end = pixels - pixels % kBlock;
    for (size_t begin = 0; begin < end; begin += kRun) {
        const size_t run = std::min(kRun, end - begin);
        splitRun<2>(planes + begin, packed + 3 * begin, run);
        splitRun<1>(planes + pixels + begin, packed + 3 * begin, run);
        splitRun<0>(planes + 2 * pixels + begin, packed + 3 * begin, run);
    }
    splitRest(planes, packed, pixels, end);
}

bool hasSsse3()
{
    unsigned int a = 0;
    unsigned int b = 0;
    unsigned int c = 0;
    unsigned int d = 0;
    return __get_cpuid(1, &a, &b, &c, &d) && (c & bit_SSSE3);
}

void splitIntoPlanes(unsigned char* planes, const unsigned char* packed, size_t pixels)
{
    static const SplitKernel kernel = hasSsse3() ? splitBySsse3 : splitBySse2;
    kernel(planes, packed, pixels);
}

}   // namespace orvo::cognex

#pragma once

#include <cstddef>
#include <cstdint>

namespace orvo::aikctl {

/// What a PNG stores in place of a row's bytes: their differences to a guess from the bytes before them. The values
/// are those of the file.
enum class PngFilter : uint8_t { None, Left, Above, Average, Paeth };
inline constexpr PngFilter kPngFilters[] = {PngFilter::None, PngFilter::Left, PngFilter::Above,
                                            PngFilter::Average, PngFilter::Paeth};

/// Filters a row of `size` bytes into `out`, which must not overlap the row or the one above. A pixel has
/// `pixelBytes`; so many readable bytes, all 0, stand before each of the two rows.
void filterRow(PngFilter filter, const uint8_t* row, const uint8_t* above, size_t size, size_t pixelBytes,
               uint8_t* out);

/// How far the bytes, taken as signed, are from 0 in all: a small sum promises a small file.
uint64_t distanceFromZero(const uint8_t* bytes, size_t size);

}   // namespace orvo::aikctl

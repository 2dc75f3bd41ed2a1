#pragma once

#include <cstdint>

namespace orvo::sim {

/// Image numbers name what picture numbers name, but are other numbers: a caller that takes the one for the
/// other finds nothing.
inline constexpr int64_t kFirstImageNumber = 1'000'000'000;

constexpr int64_t imageOfPicture(int64_t pictureNumber)
{
    return kFirstImageNumber + pictureNumber;
}

constexpr int64_t pictureOfImage(int64_t imageNumber)
{
    return imageNumber < kFirstImageNumber ? 0 : imageNumber - kFirstImageNumber;   // 0: no picture
}

}   // namespace orvo::sim

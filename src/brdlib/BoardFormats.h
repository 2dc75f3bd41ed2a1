#pragma once

#include <cstdint>

#include "aik/aik.h"

namespace orvo::cognex {

/// A pixel format of the board: its size in memory, and the codes that the host gets for it.
struct BoardFormat {
    uint32_t number;   // at the board
    uint64_t bytesPerPixel;
    int32_t packedCode;   // AIK_PIXEL_..., as the board delivers it
    int32_t planarCode;   // the same, while the planar transformation is chosen
};

inline constexpr BoardFormat kBoardFormats[] = {
    {1, 2, AIK_PIXEL_MONO16, AIK_PIXEL_MONO16}, {2, 3, AIK_PIXEL_BGR8, AIK_PIXEL_PLANAR},
    {3, 1, AIK_PIXEL_MONO8, AIK_PIXEL_MONO8},   {4, 4, AIK_PIXEL_BGRX8, AIK_PIXEL_BGRX8},
    {5, 5, AIK_PIXEL_OTHER, AIK_PIXEL_OTHER},   {6, 6, AIK_PIXEL_BGR16, AIK_PIXEL_PLANAR},
};
inline constexpr BoardFormat kOtherFormat{0, 1, AIK_PIXEL_OTHER, AIK_PIXEL_OTHER};

constexpr const BoardFormat& boardFormat(uint32_t number)
{
    for (const BoardFormat& format : kBoardFormats)
        if (format.number == number)
            return format;
    return kOtherFormat;
}

}   // namespace orvo::cognex

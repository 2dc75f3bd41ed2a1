#include "aikctl/writtenExtent.h"

namespace orvo::aikctl {

namespace {

// A number mixed out of the position: neighbours have nothing to do with each other.
uint8_t markAt(size_t position)
{
    uint64_t mixed = (position + 1) * 0x9E3779B97F4A7C15U;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9U;
    return static_cast<uint8_t>(mixed >> 56);
}

}   // namespace

void markBuffer(std::span<uint8_t> buffer)
{
    for (size_t position = 0; position < buffer.size(); ++position)
        buffer[position] = markAt(position);
}

size_t writtenExtent(std::span<const uint8_t> buffer)
{
    size_t extent = buffer.size();
    while (extent > 0 && buffer[extent - 1] == markAt(extent - 1))
        --extent;
    return extent;
}

}   // namespace orvo::aikctl

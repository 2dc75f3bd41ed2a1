#include "sim/pictures/NumbersOnly.h"

namespace orvo::sim {

namespace {

constexpr size_t kNumberSize = sizeof(uint64_t);

void put(uint64_t number, std::span<std::byte> at)
{
    for (std::byte& byte : at) {
        byte = static_cast<std::byte>(number & 0xFF);
        number >>= 8;
    }
}

}   // namespace

void NumbersOnly::paint(uint64_t number, std::span<std::byte> block)
{
    if (block.size() >= kNumberSize)
        put(number, block.first(kNumberSize));
    if (block.size() >= 2 * kNumberSize)
        put(number, block.last(kNumberSize));
}

}   // namespace orvo::sim

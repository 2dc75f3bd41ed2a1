#pragma once

#include "sim/pictures/PictureSource.h"

namespace orvo::sim {

/// The picture's number and nothing else, for measurements: 64 bits, little-endian, at the start of the block
/// and again at its end. A block below 16 bytes has it at the start only, one below 8 bytes not at all.
class NumbersOnly : public PictureSource {
public:
    void paint(uint64_t number, std::span<std::byte> block) override;
};

}   // namespace orvo::sim

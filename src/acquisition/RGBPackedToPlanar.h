#pragma once

#include "acquisition/PixelTransformation.h"

namespace orvo::cognex {

/// Splits packed pixels of three samples into three planes, one behind the other, without gaps. The order is
/// reversed: a source with blue first gives the planes red, green, blue. Takes the block as one line of
/// pixels, whatever its format says; samples left over at the end are not copied.
template <typename T>
class RGBPackedToPlanar : public PixelTransformation {
public:
    void transform(void* destination, const std::weak_ptr<Buffer>& image) override;
};

extern template class RGBPackedToPlanar<unsigned char>;

class RGB8PackedToPlanar : public RGBPackedToPlanar<unsigned char> {};

}   // namespace orvo::cognex

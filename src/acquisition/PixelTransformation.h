#pragma once

#include <cstdint>
#include <memory>
#include <span>

namespace orvo::cognex {

class Buffer;

/// Carries an image from its buffer into the host's memory: the one copy of each image. Without state.
/// Threads: host, outside every lock. The buffer is current, so the board doesn't write it.
/// Throws:  Pending if the buffer has gone with its ring.
class PixelTransformation {
public:
    virtual ~PixelTransformation() = default;

    /// `destination` must hold as many bytes as the image; nothing is checked here.
    virtual void transform(void* destination, const std::weak_ptr<Buffer>& image) = 0;
};

/// Copies the image as it is.
class NoTransformation : public PixelTransformation {
public:
    void transform(void* destination, const std::weak_ptr<Buffer>& image) override;
};

/// Splits packed pixels of three samples into three planes, one after the other, without gaps. The order is
/// reversed: a source with blue first gives the planes red, green, blue. Takes the block as one line of
/// pixels, whatever its format says; samples left over at the end are not copied.
template <typename T>
class RGBPackedToPlanar : public PixelTransformation {
public:
    void transform(void* destination, const std::weak_ptr<Buffer>& image) override;
};

extern template class RGBPackedToPlanar<unsigned char>;

class RGB8PackedToPlanar : public RGBPackedToPlanar<unsigned char> {};

/// A transformation that the host can choose: its entry in "Transformation", whether the host gets planes, and
/// how it is made.
struct TransformationRow {
    const char* name;
    int32_t value;
    bool isPlanar;
    std::shared_ptr<PixelTransformation> (*make)();
};

/// In the order of the feature's entries; the first one is the default.
std::span<const TransformationRow> transformations();

}   // namespace orvo::cognex

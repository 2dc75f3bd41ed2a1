#pragma once

#include <memory>

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

}   // namespace orvo::cognex

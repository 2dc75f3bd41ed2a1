#pragma once

#include <cstdint>
#include <memory>

namespace orvo::cognex {

class Buffer;

/// What a DMA port tells of its pictures and its ring.
class DmaObserver {
public:
    virtual ~DmaObserver() = default;

    /// A new image has arrived. Callback thread.
    virtual void newBuffer(std::weak_ptr<Buffer> buffer) = 0;
    /// The board reported a negative picture number: `code`. Callback thread.
    virtual void acquisitionError(int64_t code) = 0;
    /// The ring has been rebuilt, and all earlier buffers have gone. Host thread.
    virtual void buffersChanged() = 0;
};

}   // namespace orvo::cognex

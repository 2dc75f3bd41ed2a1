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

/// What the board library's image callback enters.
class AcqCallbackObserver {
public:
    /// Pictures are numbered from 1 with each start; a negative number is an error. Callback thread.
    virtual void acquisitionCallback(int64_t pictureNumber) = 0;

protected:
    ~AcqCallbackObserver() = default;   // never owned through this
};

}   // namespace orvo::cognex

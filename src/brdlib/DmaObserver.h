#pragma once

#include <cstdint>
#include <memory>

namespace orvo::cognex {

class Buffer;

/// What the board library's image callback enters.
class AcqCallbackObserver {
public:
    /// Pictures are numbered from 1 with each start; a negative number is an error. Callback thread.
    virtual void acquisitionCallback(int64_t pictureNumber) = 0;

protected:
    ~AcqCallbackObserver() = default;   // never owned through this
};

/// What a DMA port tells of its pictures and its ring.
class DmaObserver {
public:
    virtual ~DmaObserver() = default;

    /// A new image has arrived. Callback thread.
    virtual void newBuffer(std::weak_ptr<Buffer> buffer) = 0;
    /// The board reported a negative picture number: `code`. Callback thread.
    virtual void acquisitionError(int64_t code) = 0;
    /// The ring has been cleared, and a new one may follow or fail. Host thread.
    virtual void buffersGone() = 0;
    /// The new ring is complete. Host thread.
    virtual void buffersChanged() = 0;
};

}   // namespace orvo::cognex

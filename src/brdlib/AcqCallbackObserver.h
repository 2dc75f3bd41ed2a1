#pragma once

#include <cstdint>

namespace orvo::cognex {

/// What the board library's image callback enters.
class AcqCallbackObserver {
public:
    /// Pictures are numbered from 1 with each start; a negative number is an error. Callback thread.
    virtual void acquisitionCallback(int64_t pictureNumber) = 0;

protected:
    ~AcqCallbackObserver() = default;   // never owned through this
};

}   // namespace orvo::cognex

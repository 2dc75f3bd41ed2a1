#pragma once

#include "camera/ConnectionStrategy.h"

namespace orvo::cognex {

/// Nothing was searched, nothing was found, or the search failed.
class NoConnection : public ConnectionStrategy {
public:
    uint64_t cameraCount() const override { return 0; }
    std::weak_ptr<Camera> camera(uint64_t index) const override;
};

}   // namespace orvo::cognex

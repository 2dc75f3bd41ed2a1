#pragma once

#include "acquisition/PixelTransformation.h"

namespace orvo::cognex {

/// Copies the image as it is.
class NoTransformation : public PixelTransformation {
public:
    void transform(void* destination, const std::weak_ptr<Buffer>& image) override;
};

}   // namespace orvo::cognex

#pragma once

#include "camera/CameraConfigurator.h"

namespace orvo::cognex {

/// The parameters of a camera of the GenICam access library.
class OgcCameraConfigurator final : public CameraConfigurator {
protected:
    std::shared_ptr<const LibraryCamera> ofFamily(const std::shared_ptr<Camera>& camera) const override;
};

}   // namespace orvo::cognex

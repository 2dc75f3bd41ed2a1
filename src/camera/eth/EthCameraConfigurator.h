#pragma once

#include "camera/CameraConfigurator.h"

namespace orvo::cognex {

/// The parameters of a GigE Vision camera.
class EthCameraConfigurator final : public CameraConfigurator {
protected:
    std::shared_ptr<const LibraryCamera> ofFamily(const std::shared_ptr<Camera>& camera) const override;
};

}   // namespace orvo::cognex

#include "camera/eth/EthCameraConfigurator.h"

#include "camera/eth/EthCamera.h"

namespace orvo::cognex {

std::shared_ptr<const LibraryCamera>
EthCameraConfigurator::ofFamily(const std::shared_ptr<Camera>& camera) const
{
    return std::dynamic_pointer_cast<const EthCamera>(camera);
}

}   // namespace orvo::cognex

#include "camera/ogc/OgcCameraConfigurator.h"

#include "camera/ogc/OgcCamera.h"

namespace orvo::cognex {

std::shared_ptr<const LibraryCamera>
OgcCameraConfigurator::ofFamily(const std::shared_ptr<Camera>& camera) const
{
    return std::dynamic_pointer_cast<const OgcCamera>(camera);
}

}   // namespace orvo::cognex

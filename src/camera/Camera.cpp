#include "camera/Camera.h"

#include "AIKException.h"

namespace orvo::cognex {

std::shared_ptr<Camera> locked(const std::weak_ptr<Camera>& camera)
{
    auto owned = camera.lock();
    if (!owned)
        throw AIKException("No camera is connected");
    return owned;
}

}   // namespace orvo::cognex

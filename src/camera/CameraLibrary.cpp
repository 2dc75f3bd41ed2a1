#include "camera/CameraLibrary.h"

#include <string>

#include "AIKException.h"

namespace orvo::cognex {

void CameraLibrary::check(int32_t status) const
{
    if (status != 0)
        throw AIKException(errorPrefix + std::to_string(status));
}

}   // namespace orvo::cognex

#include "camera/NoConnection.h"

#include "AIKException.h"

namespace orvo::cognex {

std::weak_ptr<Camera> NoConnection::camera(uint64_t /*index*/) const
{
    throw AIKException("No camera connections.");
}

}   // namespace orvo::cognex

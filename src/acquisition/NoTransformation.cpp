#include "acquisition/NoTransformation.h"

#include <cstring>

#include "acquisition/buffers/Buffer.h"

namespace orvo::cognex {

void NoTransformation::transform(void* destination, const std::weak_ptr<Buffer>& image)
{
    const auto buffer = locked(image);
    if (buffer->size() > 0)
        std::memcpy(destination, buffer->data(), buffer->size());
}

}   // namespace orvo::cognex

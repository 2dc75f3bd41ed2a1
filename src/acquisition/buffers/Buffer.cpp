#include "acquisition/buffers/Buffer.h"

#include <cstdlib>

#include "AIKException.h"

namespace orvo::cognex {

Buffer::Buffer(uint64_t size) : m_data(std::malloc(size)), m_size(size) {}

Buffer::~Buffer()
{
    std::free(m_data);
}

std::shared_ptr<Buffer> locked(const std::weak_ptr<Buffer>& buffer)
{
    auto owned = buffer.lock();
    if (!owned)
        throw Pending("No image arrived within the given timeout.");
    return owned;
}

}   // namespace orvo::cognex

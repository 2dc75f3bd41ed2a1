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
    return lockedOrThrow<Pending>(buffer, "No image arrived within the given timeout.");
}

}   // namespace orvo::cognex

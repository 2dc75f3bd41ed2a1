#include <sys/mman.h>

#include "tests/support/FencedMemory.h"

namespace orvo::test {

FencedMemory::FencedMemory(size_t leastBytes)
{
    constexpr size_t kPage = 4096;
    const size_t size = (leastBytes + kPage - 1) / kPage * kPage;
    void* const all = mmap(nullptr, size + 2 * kPage, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    begin = static_cast<unsigned char*>(all) + kPage;
    end = begin + size;
    mprotect(begin, size, PROT_READ | PROT_WRITE);
}

}   // namespace orvo::test

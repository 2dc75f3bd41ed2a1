#include <windows.h>

#include "tests/support/FencedMemory.h"

namespace orvo::test {

FencedMemory::FencedMemory(size_t leastBytes)
{
    constexpr size_t kPage = 4096;
    const size_t size = (leastBytes + kPage - 1) / kPage * kPage;
    void* const all = VirtualAlloc(nullptr, size + 2 * kPage, MEM_RESERVE, PAGE_NOACCESS);
    begin = static_cast<unsigned char*>(all) + kPage;
    end = begin + size;
    VirtualAlloc(begin, size, MEM_COMMIT, PAGE_READWRITE);
}

}   // namespace orvo::test

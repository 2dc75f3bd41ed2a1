// A wait without memory for the holder of the lock. No host can make the heap fail at that one place, and no
// sanitizer lets a program bring its own `new`: such builds go without this.
#include <cstdlib>
#include <new>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "acquisition/AcquisitionStrategy.h"
#include "tests/acquisition/buffers/Ring.h"
#include "tests/support/Failures.h"

namespace {

thread_local bool t_nextFails = false;

}   // namespace

// The whole program's: the other forms end in these. Inlined, they would look like a mix of allocators.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    void* const memory = t_nextFails ? nullptr : std::malloc(size > 0 ? size : 1);
    t_nextFails = false;
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

[[gnu::noinline]] void operator delete(void* memory) noexcept
{
    std::free(memory);
}

[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept
{
    std::free(memory);
}

namespace {

using ExhaustedHeap = orvo::test::Ring;

TEST_F(ExhaustedHeap, MakesTheHostComeAgain)
{
    ringOf(2);
    orvo::cognex::NewestOnlyStrategy strategy;
    strategy.setCoordinator(coordinator);
    strategy.newBuffer(ring[0]);
    t_nextFails = true;
    EXPECT_EQ(orvo::test::pending([&] { strategy.wait(kGenerous); }), "Cannot lock BufferAccess.");
    t_nextFails = true;
    EXPECT_THROW(strategy.newBuffer(ring[1]), std::bad_alloc);
    EXPECT_THAT(ready(), testing::ElementsAre(0));
}

}   // namespace

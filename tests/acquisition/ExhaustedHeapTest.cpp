// What happens without memory at one place. No host can make the heap fail there, and no sanitizer lets a program
// bring its own `new`: such builds go without this.
#include <cstdlib>
#include <new>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "acquisition/AcquisitionStrategy.h"
#include "sim/orvo_sim_dispatcher.h"
#include "tests/acquisition/ChannelBuffers.h"
#include "tests/support/LibraryUse.h"

namespace {

thread_local int t_allocationsLeft = -1;   // after so many the heap is exhausted; negative: never

/// For a scope the calling thread gets so much memory and no more.
class Allocations {
public:
    explicit Allocations(int count) { t_allocationsLeft = count; }
    Allocations(const Allocations&) = delete;
    Allocations& operator=(const Allocations&) = delete;
    ~Allocations() { t_allocationsLeft = -1; }
};

}   // namespace

// The whole program's: the other forms end in these. Inlined, they would look like a mix of allocators.
[[gnu::noinline]] void* operator new(std::size_t size)
{
    void* const memory = t_allocationsLeft == 0 ? nullptr : std::malloc(size > 0 ? size : 1);
    if (!memory)
        throw std::bad_alloc();
    if (t_allocationsLeft > 0)
        --t_allocationsLeft;
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

using namespace orvo::templates::platform;
using orvo::tools::logging::Logging;

using ExhaustedHeap = orvo::test::ChannelBuffers;

TEST_F(ExhaustedHeap, IsNotNoticedByPictures)
{
    ringOf(2);
    coordinator->lock().readyQueue().reserve(2);
    givenBack.reserve(2);
    for (const auto& buffer : ring)
        buffer->setUnblockCallback([this](Buffer* which) { givenBack.push_back(which->number()); });
    orvo::cognex::NewestOnlyStrategy strategy;
    strategy.setCoordinator(coordinator);
    {
        const Allocations none(0);
        strategy.newBuffer(ring[0]);
        strategy.wait(kGenerous);
        strategy.release();
        strategy.newBuffer(ring[0]);
        strategy.newBuffer(ring[1]);
    }
    EXPECT_THAT(ready(), testing::ElementsAre(1));
}

class Registered : public GuardedSingleton<Registered> {
public:
    bool isInitialised = false;

protected:
    void initialise() override { isInitialised = true; }
};

TEST(ExhaustedHeapOfTheLibrary, LeavesNothingHalfMade)
{
    const auto init = [](int allocations) {
        const Allocations few(allocations);
        LibraryInitController::init();
    };
    const auto singleton = [](int allocations) {
        const Allocations few(allocations);
        return Registered::instance().isInitialised;
    };
    EXPECT_THROW(init(0), std::bad_alloc);
    LibraryInitController::init();
    EXPECT_THROW(singleton(0), std::bad_alloc);
    EXPECT_THROW(singleton(1), std::bad_alloc);   // made, and no room in the list of those that will go
    EXPECT_TRUE(Registered::instance().isInitialised);
    LibraryInitController::deinit();
}

TEST(ExhaustedHeapOfTheLibrary, LeavesNoLoggerWithoutItsObject)
{
    const orvo::test::LibraryUse use;
    Logging& logging = Logging::instance();
    const char* const name = "unit.late";
    OrvoSimLog_setLevel(name, 4);   // so that the dispatcher itself needs no memory for it any more
    const auto ask = [&](int allocations) {
        const Allocations few(allocations);
        return logging.getLogger(name);
    };
    for (int allocations = 0; allocations < 2; ++allocations) {
        EXPECT_THROW(ask(allocations), std::bad_alloc);
        OrvoSimLog_setLevel(name, allocations);   // told to every logger that is entered
    }
    EXPECT_NE(ask(2), nullptr);
}

}   // namespace

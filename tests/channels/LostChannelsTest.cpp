#include <gtest/gtest.h>

#include "brdlib/DmaPort.h"
#include "channels/BoardContainer.h"
#include "channels/VideoChannel.h"
#include "tests/support/LibraryUse.h"
#include "tests/support/Machine.h"

using namespace orvo;

namespace {

// As when the memory for a later channel is missing.
TEST(LostChannels, LeaveAPortThatCanBeSetUp)
{
    test::Machine machine;
    const test::LibraryUse use;
    machine.oneBoard({{"dmas", 1}});
    cognex::BoardContainer boards;
    auto channels = boards.channels();
    const auto port = locked(channels.front()->dmaPort());
    channels.clear();
    port->setup();   // tells an engine that is no longer there, unless the channel has detached it
    EXPECT_EQ(port->buffers().size(), 5U);
}

}   // namespace

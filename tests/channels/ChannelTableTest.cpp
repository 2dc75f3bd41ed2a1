#include "channels/ChannelTable.h"

#include <gtest/gtest.h>

#include "brdlib/DmaPort.h"
#include "channels/BoardContainer.h"
#include "channels/VideoChannel.h"
#include "features/FeatureContainer.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"
#include "tests/support/LibraryUse.h"
#include "tests/support/Machine.h"

namespace orvo::test {

namespace {

using namespace cognex;

// The exports take each id from the table itself.
TEST(Channels, AreOpenedOnceAndByTheirOwnIds)
{
    const Machine machine;
    const LibraryUse use;
    ChannelTable& table = ChannelTable::instance();
    const auto channel = std::make_shared<FailedVideoChannel>();
    EXPECT_EQ(table.addChannel(channel), 1);
    EXPECT_EQ(table.addChannel(std::make_shared<FailedVideoChannel>()), 2);
    EXPECT_EQ(aikFailure([&] { table.open(3); }), "Channel does not exits");
    EXPECT_EQ(table.open(1).lock(), channel);
    EXPECT_EQ(aikFailure([&] { table.open(1); }), "Handle already exists");
    EXPECT_EQ(table.openCount(), 1u);
    ChannelTable::destroyInstance();
}

// The two features are listed and not available, so that no host reads them.
TEST(Channels, ShareTheVersionOfTheAdapter)
{
    Machine machine;
    const LibraryUse use;
    machine.oneBoard({{"dmas", 2}});
    BoardContainer boards;
    const auto channels = boards.channels();
    ASSERT_EQ(channels.size(), 2u);
    const auto first = channels.front()->features().lock();
    const auto last = channels.back()->features().lock();
    for (const uint32_t fromTheEnd : {1u, 2u})
        first->featureAt(static_cast<uint32_t>(first->count()) - fromTheEnd)->setAvailable(true);
    EXPECT_EQ(reading(*last, "CogAdapterVersion"), "3.0.0");
    EXPECT_EQ(reading(*last, "CogAdapterInterfaceID"), "1049384");
}

// As when the memory for a later channel is missing.
TEST(Channels, ThatAreLostLeaveAPortThatCanBeSetUp)
{
    Machine machine;
    const LibraryUse use;
    machine.oneBoard({{"dmas", 1}});
    BoardContainer boards;
    auto channels = boards.channels();
    const auto port = locked(channels.front()->dmaPort());
    channels.clear();
    port->setup();   // tells an engine that is no longer there, unless the channel has detached it
    EXPECT_EQ(port->buffers().size(), 5U);
}

}   // namespace

}   // namespace orvo::test

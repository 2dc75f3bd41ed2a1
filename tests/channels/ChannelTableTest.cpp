#include "channels/ChannelTable.h"

#include <gtest/gtest.h>

#include "channels/BoardContainer.h"
#include "channels/VideoChannel.h"
#include "features/FeatureContainer.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"
#include "tests/support/LibraryUse.h"
#include "tests/support/Machine.h"

using namespace orvo;
using namespace orvo::cognex;

namespace {

class Channels : public testing::Test {
protected:
    test::Machine machine;
    test::LibraryUse m_use;
};

// The exports take each id from the table itself.
TEST_F(Channels, AreOpenedByAnIdThatWasHandedOutAndOnce)
{
    ChannelTable& table = ChannelTable::instance();
    const auto channel = std::make_shared<FailedVideoChannel>();
    EXPECT_EQ(table.addChannel(channel), 1);
    EXPECT_EQ(table.addChannel(std::make_shared<FailedVideoChannel>()), 2);
    EXPECT_EQ(test::aikFailure([&] { table.open(3); }), "Channel does not exits");
    EXPECT_EQ(table.open(1).lock(), channel);
    EXPECT_EQ(test::aikFailure([&] { table.open(1); }), "Handle already exists");
    EXPECT_EQ(table.openCount(), 1u);
    ChannelTable::destroyInstance();
}

// The two are listed and not available, so that no host reads their values.
TEST_F(Channels, KnowTheAdapterThatTheyBelongTo)
{
    machine.oneBoard({{"dmas", 2}});
    BoardContainer boards;
    const auto channels = boards.channels();
    ASSERT_EQ(channels.size(), 2u);
    const auto first = channels.front()->features().lock();
    const auto last = channels.back()->features().lock();
    const auto count = static_cast<uint32_t>(first->count());
    EXPECT_EQ(first->featureAt(count - 1), last->featureAt(count - 1));   // one for all
    first->featureAt(count - 1)->setAvailable(true);
    first->featureAt(count - 2)->setAvailable(true);
    EXPECT_EQ(test::reading(*last, "CogAdapterVersion"), "3.0.0");
    EXPECT_EQ(test::reading(*last, "CogAdapterInterfaceID"), "1049384");
}

}   // namespace

#include <stdexcept>
#include <thread>

#include <gtest/gtest.h>

#include "os/Os.h"
#include "sim/orvo_sim_dispatcher.h"
#include "tests/support/LibraryUse.h"
#include "tools/logging/Logging.h"
#include "tools/logging/Record.h"

using namespace orvo;
using namespace orvo::tools::logging;
using orvo::templates::platform::LibraryInitController;

namespace {

/// The dispatcher beside this program is attached, and one of its loggers is on from level 4.
class AttachedLogging : public testing::Test {
protected:
    AttachedLogging()
    {
        OrvoSimLog_setLevel("unit.logger", kTolerated);
        OrvoSimLog_clear();
        OrvoSimLog_capture(1);
    }

    /// The record at that place, all zero if there is none.
    static OrvoSimLog_Record record(uint64_t index)
    {
        OrvoSimLog_Record found{};
        OrvoSimLog_read(index, &found);
        return found;
    }

    test::LibraryUse m_use;
    Logger& logger = *Logging::instance().getLogger("unit.logger");
};

TEST_F(AttachedLogging, HasOneLoggerPerNameThatCanBeMutedForOneThread)
{
    EXPECT_EQ(CachedLogger("unit.logger").get(), &logger);
    EXPECT_NE(Logging::instance().getLogger("unit.other"), &logger);
    EXPECT_TRUE(logger.setThreadEnabled(false));
    EXPECT_FALSE(logger.setThreadEnabled(false));
    EXPECT_FALSE(logger.isEnabled(kCaught));
    std::thread([&] { EXPECT_TRUE(logger.isEnabled(kCaught)); }).join();
    EXPECT_FALSE(logger.setThreadEnabled(true));
    EXPECT_TRUE(logger.setThreadEnabled(true));
    EXPECT_TRUE(logger.isEnabled(kCaught));
}

TEST_F(AttachedLogging, AttachesForEachUseAndIsSilentWhenTheDispatcherIsGone)
{
    EXPECT_EQ(OrvoSimLog_countAttached(), 1u);
    LibraryInitController::deinit();
    EXPECT_EQ(OrvoSimLog_countAttached(), 0u);
    OrvoSimLog_setLevel("unit.logger", kTrace);
    LibraryInitController::init();
    Logger* const anew = Logging::instance().getLogger("unit.logger");
    EXPECT_TRUE(anew->isEnabled(kTrace));
    EXPECT_EQ(OrvoSimLog_countAttached(), 1u);

    OrvoSimLog_goAway();
    Logger* const late = Logging::instance().getLogger("unit.logger");
    EXPECT_FALSE(late->isEnabled(kCaught));
    late->write(kCaught, "to nobody", 0, 0);
    anew->write(kCaught, "to nobody", 0, 0);
    EXPECT_EQ(record(0).text, nullptr);
}

TEST_F(AttachedLogging, WritesRecordsWithTheirThreadAndDropsOneThatFails)
{
    recordTrace(&logger, {"brdlib/DmaPort", 1}, [](std::ostream&) { FAIL() << "built"; });
    recordFailure(&logger, kCaught, [](std::ostream&) { throw std::runtime_error("no text"); });
    logger.write(kCaught, "as it is {}", 7, 8);
    EXPECT_STREQ(record(0).text, "as it is {}");
    EXPECT_EQ(record(0).word, 7u);
    EXPECT_EQ(record(0).longWord, 8u);

    OrvoSimLog_setLevel("unit.logger", kTrace);
    const std::string thread = "thread-id=" + std::to_string(os::currentThreadId());
    recordTrace(&logger, {"brdlib/DmaPort", 191}, [](std::ostream& text) { text << "start " << 1234567; });
    EXPECT_EQ(record(1).text, "source-file=brdlib/DmaPort,source-line=191," + thread + "|start 1234567");
    recordFailure(&logger, kCaught, [](std::ostream& text) { text << "it failed"; });
    EXPECT_EQ(record(2).text, thread + "|it failed");
}

}   // namespace

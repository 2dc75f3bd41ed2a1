#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "tests/dispatcher/AttachedDispatcher.h"

namespace orvo::sim {
namespace {

using Dispatcher = AttachedDispatcher;
using LevelChanges = std::vector<std::pair<int64_t, int32_t>>;

std::string contentOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST_F(Dispatcher, AnswersAnIdFromOneAndTheLevelFromTheRules)
{
    const auto [id, level] = query("quiet");
    EXPECT_GE(id, 1);
    EXPECT_EQ(level, 3);
    EXPECT_EQ(query("wordy").second, 1);
    EXPECT_EQ(query("silent").second, 7);
    EXPECT_NE(idOf("wordy"), id);
    EXPECT_EQ(idOf("quiet"), id);
}

TEST_F(Dispatcher, TellsItsClientOfALevelOnlyWhileItIsAttached)
{
    const int64_t id = idOf("changing");
    m_setLevel("changing", 5);
    m_setLevel("changing", 99);
    EXPECT_EQ(*s_levelChanges, (LevelChanges{{id, 5}, {id, 7}}));

    detach();
    m_setLevel("changing", 2);
    EXPECT_EQ(s_levelChanges->size(), 2U);

    attach();
    EXPECT_EQ(query("changing"), std::make_pair(id, 2));
}

TEST_F(Dispatcher, TakesALevelForALoggerThatNobodyAskedForYet)
{
    m_setLevel("later", 6);
    EXPECT_EQ(query("later").second, 6);
}

TEST_F(Dispatcher, GoesAwayOnceAndLetsOthersCome)
{
    const int64_t id = idOf("orphan");
    m_goAway();
    EXPECT_EQ(s_gone, 1);
    EXPECT_EQ(m_countAttached(), 0U);
    m_goAway();
    m_setLevel("orphan", 1);
    write(id, 6, "still harmless");
    EXPECT_EQ(s_gone, 1);
    EXPECT_TRUE(s_levelChanges->empty());

    attach();
    EXPECT_EQ(m_countAttached(), 1U);
}

TEST_F(Dispatcher, CapturesAllThatArrivesWhileAskedTo)
{
    const int64_t id = idOf("captured");
    write(id, 5, "before");
    m_capture(1);
    write(id, 1, "first {}");
    write(id, 6, nullptr);
    write(id + 1000, 5, "of nobody");
    m_capture(0);
    write(id, 5, "after");

    OrvoSimLog_Record record{};
    ASSERT_EQ(m_read(0, &record), 1);
    EXPECT_EQ(record.id, id);
    EXPECT_EQ(record.level, 1);
    EXPECT_STREQ(record.logger, "captured");
    EXPECT_STREQ(record.text, "first {}");
    ASSERT_EQ(m_read(1, &record), 1);
    EXPECT_EQ(record.level, 6);
    EXPECT_STREQ(record.text, "");
    EXPECT_EQ(m_read(2, &record), 0);

    m_clear();
    EXPECT_EQ(m_read(0, &record), 0);
}

TEST_F(Dispatcher, WritesWhatTheLevelLetsThroughIntoTheInstallationsLog)
{
    const std::string mark =
        std::to_string(std::chrono::system_clock::now().time_since_epoch().count()) + " {} %s";
    const int64_t id = idOf("written");
    write(id, 3, ("passes " + mark).c_str());
    write(id, 2, ("stays " + mark).c_str());

    const auto log = std::filesystem::path(folderOfThisProgram()).parent_path() / "log";
    const std::string content = contentOf(log / "orvo-cognex-adapter.log");
    EXPECT_NE(content.find("[written] [info] passes " + mark), std::string::npos);
    EXPECT_EQ(content.find("stays " + mark), std::string::npos);
}

TEST_F(Dispatcher, LetsNobodyDetachWhileACallToThemIsUnderWay)
{
    static std::atomic<bool> entered, detaching;
    entered = detaching = false;
    s_insideLevelChange = [] {
        entered = true;
        while (!detaching)
            std::this_thread::yield();
    };
    std::thread setter([this] { m_setLevel("held", 4); });
    while (!entered)
        std::this_thread::yield();
    detaching = true;
    detach();
    EXPECT_EQ(s_levelChanges->size(), 1U);
    setter.join();
}

TEST_F(Dispatcher, LetsTheProcessEndWhileRecordsFlow)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    // The leak checker stumbles over a thread that still runs at the end.
    os::setEnvironmentVariable("ASAN_OPTIONS", os::environmentVariable("ASAN_OPTIONS") + ":detect_leaks=0");
    EXPECT_EXIT(
        {
            const int64_t id = idOf("flowing");
            static std::atomic<int> written;
            std::thread([this, id] {
                for (;; ++written)
                    write(id, 5, "and another one");
            }).detach();
            while (written < 100)
                std::this_thread::yield();
            std::exit(7);
        },
        testing::ExitedWithCode(7), "");
}

}   // namespace
}   // namespace orvo::sim

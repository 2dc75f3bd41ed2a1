#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

#include "os/Program.h"
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

TEST_F(Dispatcher, TellsItsClientOfALevelOnlyWhileItIsAttached)
{
    EXPECT_EQ(query("wordy").second, 1);
    EXPECT_EQ(query("silent").second, 7);
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

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "os/Os.h"
#include "os/Program.h"
#include "sim/dispatcher/LevelRules.h"
#include "sim/orvo_sim_dispatcher.h"
#include "tests/support/Places.h"

namespace orvo::test {

namespace {

using namespace std::chrono_literals;

/// The dispatcher as its client finds it beside this program, with one client attached.
class Dispatcher : public testing::Test {
protected:
    Dispatcher()
    {
        os::setEnvironmentVariable("ORVO_SIM_LOG_LEVEL", "info,wordy=trace");
        os::Module library =
            os::loadLibrary(libraryBesideUs("common-logging-dispatcher"), os::Neighbours::BesideTheLibrary);
        m_descriptor =
            reinterpret_cast<const Descriptor*>(os::findSymbol(library, "logging_dispatcher_descriptor"));
        m_descriptor->attach(
            this, [] {}, [](int64_t, int32_t) {}, &query, &write);
    }
    ~Dispatcher() override { m_descriptor->detach(this, m_descriptor); }

    void (*query)(const char* name, int64_t* id, int32_t* level) = nullptr;
    void (*write)(int64_t id, int32_t level, const char* text, uint32_t word, uint64_t longWord) = nullptr;
    int64_t id = 0;
    int32_t level = 0;

private:
    struct Descriptor {
        void (*attach)(void* client, void (*gone)(), void (*changed)(int64_t, int32_t), decltype(query)*,
                       decltype(write)*);
        void (*detach)(void* client, const void* descriptor);
    };

    const Descriptor* m_descriptor = nullptr;
};

TEST_F(Dispatcher, WritesWhatTheLevelsLetThrough)
{
    query("wordy", &id, &level);
    EXPECT_EQ(level, 1);
    OrvoSimLog_setLevel("changing", 99);
    query("changing", &id, &level);
    EXPECT_EQ(level, 7);
    OrvoSimLog_setLevel("changing", 5);
    const std::string mark = std::to_string(std::chrono::system_clock::now().time_since_epoch().count());
    write(id, 5, ("passes {} %s " + mark).c_str(), 0, 0);
    write(id, 4, ("stays " + mark).c_str(), 0, 0);

    const auto bin = std::filesystem::path(libraryBesideUs("")).parent_path();
    std::ifstream file(bin.parent_path() / "log" / "orvo-cognex-adapter.log", std::ios::binary);
    const std::string log(std::istreambuf_iterator<char>(file), {});
    EXPECT_NE(log.find("[changing] [error] passes {} %s " + mark), std::string::npos);
    EXPECT_EQ(log.find("stays " + mark), std::string::npos);
}

TEST(LevelRules, GiveEachLoggerItsLevelAndTellWhatIsNone)
{
    using spdlog::level::level_enum;
    EXPECT_EQ(sim::LevelRules(" , ,b=trace").levelOf("a"), level_enum::warn);
    const sim::LevelRules rules(" info , orvo.Cognex.DmaPort = TRACE,b=off,c=err,b=critical,loud,d=,d=7");
    EXPECT_EQ(rules.unknownLevels(), (std::vector<std::string>{"loud", "", "7"}));
    for (const auto& [logger, level] : {std::pair("a", level_enum::info),
                                        {"orvo.Cognex.DmaPort", level_enum::trace},
                                        {"orvo.Cognex.dmaport", level_enum::info},
                                        {"b", level_enum::critical},
                                        {"c", level_enum::err},
                                        {"d", level_enum::info}})
        EXPECT_EQ(rules.levelOf(logger), level) << logger;
}

}   // namespace

}   // namespace orvo::test

#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

using Features = AikctlTest;

json named(const json& list, const std::string& name)
{
    for (const auto& feature : list["features"])
        if (feature["name"] == name)
            return feature;
    return nullptr;
}

TEST_F(Features, AreShownAsTheyAreAndNotChanged)
{
    const json list = run("features 0 --json").json();
    EXPECT_EQ(journal("Brd_set* Brd_Add* Brd_Alloc* Brd_Acquire* Eth_* Ogc_*"), test::Lines());
    EXPECT_EQ(named(list, "AcquisitionStrategy")["value"], "OldestFirstOverwrite");
    EXPECT_EQ(named(list, "AcquisitionStrategy")["entries"].size(), 3U);
    EXPECT_EQ(named(list, "PortCount")["available"], false);
    EXPECT_EQ(named(list, "CameraCommand")["available"], false);   // can only be written
    EXPECT_EQ(named(list, "Detect")["available"], nullptr);
    EXPECT_EQ(named(list, "BrdIntValue")["available"], true);
    EXPECT_EQ(named(list, "BrdIntValue")["value"], nullptr);
    EXPECT_NE(named(list, "BrdIntValue")["failure"], "");

    EXPECT_THAT(run("features 1 --camera").err, HasSubstr("first one of the cameras at ports 0 and 1"));
    const json connected = run("features 1 --camera --port 1 --json").json();
    EXPECT_EQ(named(connected, "CameraName")["value"], "Camera 0-1");
    EXPECT_EQ(named(connected, "CameraCommand")["available"], true);
    EXPECT_EQ(named(connected, "EthActionCommand_Send")["available"], true);

    EXPECT_THAT(run("features 2").out, HasSubstr("\nBufferCount "));
}

TEST_F(Features, FitTheTerminal)
{
    const std::string mark = "…";
    const std::string whole = run("features 0").out;
    const std::string cut = run("features 0", {70, false}).out;
    EXPECT_THAT(cut, HasSubstr("\nBufferCount                        rw      yes        5\n"));
    EXPECT_THAT(cut, HasSubstr("yes        (Feature could " + mark + "\n"));
    EXPECT_EQ(run("features 0 --wide", {70, false}).out, whole);
    EXPECT_THAT(whole, testing::Not(HasSubstr(mark)));
}

// docs/features.md is what this prints. After a change: `aikctl reference > docs/features.md`.
TEST_F(Features, HaveAPageThatIsUpToDate)
{
    EXPECT_EQ(run("reference").out, textOf("features.md"));

    noApplet(1);   // one kind of camera is missing: no page rather than half of it
    const Outcome half = run("reference");
    EXPECT_EQ(half.exitCode, 1);
    EXPECT_EQ(half.out, "");
}

}   // namespace
}   // namespace orvo::aikctl

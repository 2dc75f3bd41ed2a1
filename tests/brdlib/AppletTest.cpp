#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AIKException.h"
#include "brdlib/AppletLoader.h"
#include "brdlib/DmaPort.h"
#include "tests/brdlib/LoadedApplet.h"
#include "tests/support/Failures.h"

using namespace orvo::cognex;
using orvo::test::aikFailure;
using orvo::test::bareFailure;
using orvo::test::json;
using orvo::test::Machine;

namespace {

using Applet = orvo::test::LoadedApplet;

json twoDmas()
{
    return Machine::process({Machine::dma(4), Machine::dma(7)});
}

// Whoever chooses the loader forgets why the others refused.
TEST(Loaders, RefuseAPathThatIsNotOfTheirKind)
{
    EXPECT_NE(kDllLoader.create("/Dlls/applet.bin", {}), nullptr);
    EXPECT_NE(kHapLoader.create("applet.hAp.bak", {}), nullptr);
    EXPECT_NE(kMcfLoader.create("applet.mCf", {}), nullptr);
    EXPECT_EQ(aikFailure([] { kDllLoader.create("applet.hap", {}); }), "Path does not refer a dll applet.");
    EXPECT_EQ(aikFailure([] { kHapLoader.create("applet.dll", {}); }), "Path does not refer to a hap file!");
    EXPECT_EQ(aikFailure([] { kMcfLoader.create("mcf/applet", {}); }),
              "Given path does not refer an mcf file!");
}

TEST_F(Applet, TellsNothingOfABoardThatTellsNothing)
{
    load(Machine::appletOf({twoDmas()}));
    OrvoSim_answer("Brd_getBoardNameByType", 1, 0);
    EXPECT_EQ(board->boardName(), "");
    OrvoSim_answer("Brd_getSystemInformation code=1012", 1, -1);
    EXPECT_EQ(board->boardText(), "");
}

TEST_F(Applet, WithoutDmasStopsAndDoesNotStart)   // and has no channel by which a host could try
{
    load(Machine::appletOf({twoDmas()}));
    const auto empty = AppletProcess::create(0, board->applet()->handle());
    EXPECT_EQ(bareFailure([&] { empty->start(); }), "No dma created!");
    EXPECT_NO_THROW(empty->stop());
}

TEST_F(Applet, StopsStartingAtTheFirstDmaThatFails)
{
    load(Machine::appletOf({twoDmas()}));
    process().setupAll();
    OrvoSim_answer("Brd_AcquireEx dma=7", 1, -9);
    EXPECT_EQ(aikFailure([&] { process().start(); }), "brd error code: -9");
    EXPECT_TRUE(locked(process().dmaPortAt(0))->isRunning());
    EXPECT_FALSE(locked(process().dmaPortById(7))->isRunning());
    EXPECT_TRUE(process().dmaPortById(1).expired());
    EXPECT_EQ(aikFailure([&] { process().stop(); }), "Acquisition is not running");
    EXPECT_FALSE(locked(process().dmaPortAt(0))->isRunning());
}

TEST_F(Applet, HandsTheGeometryToAllDmas)   // hosts set that of their own channel
{
    load(Machine::appletOf({twoDmas()}));
    process().setWidth(16);
    process().setHeight(2);
    process().setXOffset(3);
    process().setYOffset(1);
    EXPECT_THAT(orvo::test::journal("Brd_setParameter"),
                testing::ElementsAre("Brd_setParameter board=0 id=100 value=16 dma=4 -> 0",
                                     "Brd_setParameter board=0 id=100 value=16 dma=7 -> 0",
                                     "Brd_setParameter board=0 id=200 value=2 dma=4 -> 0",
                                     "Brd_setParameter board=0 id=200 value=2 dma=7 -> 0",
                                     "Brd_setParameter board=0 id=300 value=3 dma=4 -> 0",
                                     "Brd_setParameter board=0 id=300 value=3 dma=7 -> 0",
                                     "Brd_setParameter board=0 id=400 value=1 dma=4 -> 0",
                                     "Brd_setParameter board=0 id=400 value=1 dma=7 -> 0"));
}

}   // namespace

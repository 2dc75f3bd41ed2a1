#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AIKException.h"
#include "brdlib/DllLoader.h"
#include "brdlib/DmaPort.h"
#include "brdlib/HapLoader.h"
#include "brdlib/McfLoader.h"
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
    EXPECT_NE(DllLoader::create("/Dlls/applet.bin", {}), nullptr);
    EXPECT_NE(HapLoader::create("applet.hAp.bak", {}), nullptr);
    EXPECT_NE(McfLoader::create("applet.mCf", {}), nullptr);
    EXPECT_EQ(aikFailure([] { DllLoader::create("applet.hap", {}); }), "Path does not refer a dll applet.");
    EXPECT_EQ(aikFailure([] { HapLoader::create("applet.dll", {}); }), "Path does not refer to a hap file!");
    EXPECT_EQ(aikFailure([] { McfLoader::create("mcf/applet", {}); }),
              "Given path does not refer an mcf file!");
}

// All that a channel uses outlives it, so that no host sees these.
TEST(Objects, SayWhatTheyWereOnceTheyHaveGone)
{
    EXPECT_EQ(aikFailure([] { locked(std::weak_ptr<BoardWrapper>()); }), "No board is connected");
    EXPECT_EQ(aikFailure([] { locked(std::weak_ptr<AppletWrapper>()); }), "No applet is loaded!");
    EXPECT_EQ(aikFailure([] { locked(std::weak_ptr<AppletProcess>()); }), "No applet is loaded!");
    EXPECT_EQ(aikFailure([] { locked(std::weak_ptr<DmaPort>()); }), "No dma port is connected");
    EXPECT_EQ(aikFailure([] { DllLoader::create("dll", {})->load(); }), "No board is connected");
}

TEST_F(Applet, TellsNothingOfABoardThatTellsNothing)
{
    load(Machine::appletOf({twoDmas()}));
    OrvoSim_answer("Brd_getBoardNameByType", 1, 0);
    EXPECT_EQ(board->boardName(), "");
    OrvoSim_answer("Brd_getSystemInformation code=1012", 1, -1);
    EXPECT_EQ(board->boardText(), "");
}

TEST_F(Applet, HasTheCountsAndNumbersOfTheBoard)
{
    json described = twoDmas();
    described["cameraPorts"] = {2, 3, 5};
    load(Machine::appletOf({described}));
    EXPECT_EQ(process().dmaCount(), 2u);
    EXPECT_EQ(process().dmaId(1), 7u);
    EXPECT_EQ(process().camPortCount(), 3u);
    EXPECT_EQ(process().camIndex(2), 5u);

    EXPECT_EQ(locked(process().dmaPortAt(1))->dmaIndex(), 7);
    EXPECT_EQ(process().dmaPortById(7).lock(), process().dmaPortAt(1).lock());
    EXPECT_TRUE(process().dmaPortAt(2).expired());
    EXPECT_TRUE(process().dmaPortAt(-1).expired());
    EXPECT_TRUE(process().dmaPortById(1).expired());
}

// Who builds processes and ports leaves out those that fail, and says nothing.
TEST_F(Applet, SaysWhatTheBoardDoesNotTell)
{
    load(Machine::appletOf({twoDmas()}));
    OrvoSim_answer("Brd_getParameterWithType", 0, -1);
    EXPECT_EQ(bareFailure([&] { process().dmaCount(); }), "Cannot get the number of dma ports");
    EXPECT_EQ(bareFailure([&] { process().camPortCount(); }), "Cannot get the number of cam ports");
    OrvoSim_answer("Brd_getParameter id=3090", 0, -1);
    EXPECT_EQ(bareFailure([&] { process().camIndex(1); }), "Cannot get cam index");

    const int32_t negative = -3;
    OrvoSim_answerWith("Brd_getParameter id=3080", 1, -1, &negative, sizeof negative);
    EXPECT_EQ(bareFailure([&] { process().dmaId(1); }), "Cannot get dma id");
    OrvoSim_answer("Brd_getParameter id=3080", 1, -1);
    EXPECT_EQ(process().dmaId(1), 1u);   // the position, by an applet without numbers
    OrvoSim_answerWith("Brd_getParameter id=3080", 1, 0, &negative, sizeof negative);
    EXPECT_EQ(process().dmaId(1), static_cast<uint32_t>(negative));
}

// As above: the counts that are had are shown with a host.
TEST_F(Applet, OfAnOldKindSaysWhyItsFileDoesNotTellItsDmas)
{
    json applet = Machine::appletOf({twoDmas(), {{"dmas", 1}}});
    applet["lacks"] = {3050};
    applet["info"] = 2;
    load(applet);
    EXPECT_EQ(process().dmaCount(), 2u);
    EXPECT_EQ(board->applet()->processes().at(1)->dmaCount(), 0u);
    OrvoSim_answerWith("Brd_getSystemInformation code=1300", 1, 0, "nowhere", 8);
    EXPECT_EQ(aikFailure([&] { process().dmaCount(); }), "Applet dll can not be loaded.");
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

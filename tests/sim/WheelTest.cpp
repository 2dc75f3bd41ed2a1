#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/sim/SimulatedBoards.h"

namespace orvo::test {

namespace {

using ::testing::HasSubstr;

/// The wheel in the test's hand, over an open board with a ring.
class Wheel : public SimulatedBoards {
protected:
    Wheel() { OrvoSim_setManual(1); }

    void* const board = open(0, R"({"width": 16, "height": 4})");
    PictureRecorder recorder;
    Ring ring{board, 0, 3, 64};
};

TEST_F(Wheel, WritesEveryCallWithItsArguments)
{
    OrvoSim_clearJournal();
    ring.listen(recorder);
    ring.start();
    OrvoSim_deliver(0, 0, 1);
    ring.timestampOf(1);
    ring.blockOf(1);
    ring.blockOf(2);
    ring.giveBack(0);
    ring.free();
    uint32_t width = 8;
    brd.Brd_setParameter(board, 100, &width, 0);
    brd.Brd_getParameter(board, 100, &width, 0);
    int32_t word = 1;
    brd.Brd_getParameter(board, 3080, &word, 0);
    brd.Brd_getParameterWithType(board, 3070, &word, 0, 1);
    char text[8];
    int32_t length = sizeof text;
    brd.Brd_getParameterProperty(board, 100, 1, text, &length);
    brd.Brd_getParameterPropertyEx(board, 100, 0, 1, nullptr, &length);
    brd.Brd_getParameterIdByName(board, "none");
    brd.Brd_getLastErrorNumber(board);
    brd.Brd_getBoardNameByType(2897, 1);
    ring.stop();
    brd.Brd_registerApcHandler(board, 0, nullptr, 0);
    brd.Brd_DelMem(board, ring.head(), 2);
    brd.Brd_FreeMemHead(board, ring.head());
    brd.Brd_FreeMemHead(board, ring.head());
    brd.Brd_AddMem(board, nullptr, 4, 0, nullptr);
    brd.Brd_FreeGrabber(board);
    brd.Brd_FreeGrabber(board);
    endLife();
    EXPECT_EQ(
        "Brd_registerApcHandler board=0 dma=0 control=set zero=0 -> 0\n"
        "Brd_AcquireEx board=0 dma=0 pictureCount=-1 mode=2 head=h1 -> 0\n"
        "Brd_getImageEx board=0 selector=220 pictureNumber=1 dma=0 timeout=0 head=h1 -> 1000000001\n"
        "Brd_getParameterEx board=0 id=22030 dma=0 head=h1 imageNumber=1000000001 -> 0 value=4166666\n"
        "Brd_getImagePtrEx board=0 pictureNumber=1 dma=0 head=h1 -> b0\n"
        "Brd_getImagePtrEx board=0 pictureNumber=2 dma=0 head=h1 -> null\n"
        "Brd_setStatusEx board=0 code=512 imageNumber=1 dma=0 head=h1 -> 0\n"
        "Brd_getStatusEx board=0 code=40 imageNumber=0 dma=0 head=h1 -> 3\n"
        "Brd_setParameter board=0 id=100 value=8 dma=0 -> 0\n"
        "Brd_getParameter board=0 id=100 dma=0 -> 0 value=8\n"
        "Brd_getParameter board=0 id=3080 value=1 dma=0 -> 0 value=1\n"
        "Brd_getParameterWithType board=0 id=3070 dma=0 type=1 -> 0 value=1\n"
        "Brd_getParameterProperty board=0 id=100 property=1 buffer=set length=8 -> 0 length=2 buffer=\"2\"\n"
        "Brd_getParameterPropertyEx board=0 id=100 property=0 dma=1 buffer=null -> 0 length=3\n"
        "Brd_getParameterIdByName board=0 name=\"none\" -> -2070\n"
        "Brd_getLastErrorNumber board=0 -> -2070\n"
        "Brd_getBoardNameByType type=2897 one=1 -> \"Orvo Gigabit 1\"\n"
        "Brd_stopAcquireEx board=0 dma=0 head=h1 zero=0 -> 0\n"
        "Brd_registerApcHandler board=0 dma=0 control=null zero=0 -> 0\n"
        "Brd_DelMem board=0 head=h1 index=2 -> 0\n"
        "Brd_FreeMemHead board=0 head=h1 -> 0\n"
        "Brd_FreeMemHead board=0 head=? -> -2030\n"
        "Brd_AddMem board=0 buffer=null size=4 index=0 head=null -> -2030\n"
        "Brd_FreeGrabber board=0 -> 0\n"
        "Brd_FreeGrabber board=? -> -2011\n"
        "Brd_FreeLibraries\n",
        journal());
    EXPECT_EQ("Brd_FreeGrabber board=0 -> 0\n"
              "Brd_FreeGrabber board=? -> -2011\n"
              "Brd_FreeLibraries\n",
              journal("Brd_Free* -Brd_FreeMemHead"));
}

TEST_F(Wheel, BeginsAndEndsTheJournalAsTold)
{
    EXPECT_THAT(journal(), HasSubstr("Brd_InitEx path=\"" + folder.path("applet0.hap") +
                                     "\" boardIndex=0 flags=0 -> 0\n"
                                     "Brd_AllocMemHead board=0 totalSize=192 bufferCount=3 -> h1\n"
                                     "Brd_AddMem board=0 buffer=b0 size=64 index=0 head=h1 -> 0\n"));
    const uint64_t before = OrvoSim_countJournal();
    ring.lost();
    char cut[8];
    EXPECT_EQ(journal("Brd_getStatusEx").size() + 1, OrvoSim_readJournal("", before, cut, sizeof cut));
    EXPECT_STREQ("Brd_get", cut);

    OrvoSim_limitJournal(before + 1);
    ring.lost();
    EXPECT_EQ(before + 1, OrvoSim_countJournal());
    OrvoSim_clearJournal();
    EXPECT_EQ("", journal());
    OrvoSim_limitJournal(0);
    ring.lost();
    EXPECT_EQ("", journal());
}

TEST_F(Wheel, MakesTheNthMatchingCallFail)
{
    OrvoSim_answer("Brd_getStatusEx code=30", 2, -9);
    OrvoSim_answer("Brd_setStatusEx", 0, 4);
    EXPECT_EQ(0, ring.lost());
    EXPECT_EQ(3, ring.free());
    EXPECT_EQ(-9, ring.lost());
    EXPECT_EQ(0, ring.lost());
    EXPECT_EQ(4, ring.giveBack(0));
    EXPECT_EQ(4, ring.giveBack(0));
    OrvoSim_clearScript();
    EXPECT_EQ(0, ring.giveBack(0));

    OrvoSim_answer("Brd_AllocMemHead", 1, -11);
    EXPECT_FALSE(brd.Brd_AllocMemHead(board, 1, 1));
    EXPECT_EQ(-11, brd.Brd_getLastErrorNumber(board));
    OrvoSim_answer("Brd_InitEx boardIndex=1", 1, -12);
    EXPECT_FALSE(open(1, "{}"));
    EXPECT_EQ(-12, brd.Brd_getLastErrorNumber(nullptr));
    EXPECT_TRUE(open(1, "{}"));
}

TEST_F(Wheel, LetsAFailingCallHaveNoEffectButThatOfStopping)
{
    PictureRecorder other;
    ring.listen(recorder);
    OrvoSim_answer("Brd_registerApcHandler", 1, -1);
    OrvoSim_answer("Brd_AcquireEx", 1, -1);
    EXPECT_EQ(-1, ring.listen(other));
    EXPECT_EQ(-1, ring.start());
    EXPECT_EQ(ORVO_SIM_NOT_RUNNING, OrvoSim_deliver(0, 0, 1));
    ring.start();
    OrvoSim_deliver(0, 0, 1);
    EXPECT_EQ(1u, recorder.numbers().size());
    EXPECT_EQ(0u, other.numbers().size());

    OrvoSim_answer("Brd_stopAcquireEx", 1, -1);
    EXPECT_EQ(-1, ring.stop());
    EXPECT_EQ(ORVO_SIM_NOT_RUNNING, OrvoSim_deliver(0, 0, 1));
    EXPECT_EQ(0, ring.stop());
}

TEST_F(Wheel, HandsOutWhatTheTestWants)
{
    const int32_t minus = -3;
    OrvoSim_answerWith("Brd_getParameter id=3080", 1, -1, &minus, sizeof minus);
    int32_t word = 0;
    EXPECT_EQ(-1, brd.Brd_getParameter(board, 3080, &word, 0));
    EXPECT_EQ(-3, word);

    OrvoSim_answerWith("Brd_getSystemInformation code=100", 0, 0, "fast", 5);
    char text[8] = {};
    uint32_t length = 4;
    EXPECT_GT(0, brd.Brd_getSystemInformation(nullptr, 100, 0, 0, text, &length)) << "the length word counts";
    length = sizeof text;
    EXPECT_EQ(0, brd.Brd_getSystemInformation(nullptr, 100, 0, 0, text, &length));
    EXPECT_STREQ("fast", text);
    EXPECT_EQ(5u, length);

    OrvoSim_answerWith("Brd_getImagePtrEx", 1, 0, "elsewhere", 10);
    EXPECT_STREQ("elsewhere", static_cast<const char*>(brd.Brd_getImagePtrEx(board, 1, 0, ring.head())));
    EXPECT_THAT(journal("Brd_getImagePtrEx"), HasSubstr("-> ?\n"));
    OrvoSim_answer("Brd_getBoardNameByType", 1, 0);
    EXPECT_FALSE(brd.Brd_getBoardNameByType(2897, 1));
}

TEST_F(Wheel, HoldsACallBeforeOrBehindItsEffect)
{
    for (const int32_t where : {ORVO_SIM_AT_ENTRY, ORVO_SIM_AT_EXIT}) {
        OrvoSim_hold("Brd_AcquireEx dma=0", 1, where);
        EXPECT_FALSE(OrvoSim_waitUntilHeld("Brd_AcquireEx dma=0", 1));
        std::atomic<bool> started{false};
        std::thread starter([&] { started = ring.start() == 0; });
        EXPECT_TRUE(OrvoSim_waitUntilHeld("Brd_AcquireEx dma=0", kGenerousMs));
        EXPECT_FALSE(started);
        EXPECT_THAT(journal("Brd_AcquireEx"), HasSubstr("head=h1 ...\n"));
        EXPECT_EQ(where == ORVO_SIM_AT_EXIT ? 1 : ORVO_SIM_NOT_RUNNING, OrvoSim_deliver(0, 0, 1));
        OrvoSim_letGo("Brd_AcquireEx dma=0");
        starter.join();
        EXPECT_TRUE(started);
        ring.stop();
    }
}

TEST_F(Wheel, CallsBackWithAnyNumberWhileACallbackIsRegistered)
{
    EXPECT_EQ(ORVO_SIM_NOT_RUNNING, OrvoSim_callBack(0, 0, -5));
    ring.listen(recorder);
    EXPECT_EQ(0, OrvoSim_callBack(0, 0, -5));
    EXPECT_EQ(0, OrvoSim_callBack(0, 0, 1LL << 40));
    EXPECT_EQ((std::vector<int64_t>{-5, 1LL << 40}), recorder.numbers());
    EXPECT_EQ(3, ring.free());
    OrvoSim_Ledger untouched{};
    EXPECT_EQ(0, OrvoSim_readLedger(0, 0, &untouched)) << "it never ran";
}

TEST_F(Wheel, RefusesToDeliverFromInsideTheCallbackThatWouldHaveToEnd)
{
    std::vector<int32_t> results;
    PictureRecorder insider([&](int64_t) {
        results.push_back(OrvoSim_deliver(0, 0, 1));
        results.push_back(OrvoSim_callBack(0, 0, 1));
    });
    ring.listen(insider);
    ring.start();
    EXPECT_EQ(1, OrvoSim_deliver(0, 0, 1));
    EXPECT_EQ((std::vector<int32_t>{ORVO_SIM_BUSY, ORVO_SIM_BUSY}), results);
}

TEST_F(Wheel, CountsTheLedgerAnewInEachLife)
{
    ring.start();
    OrvoSim_deliver(0, 0, 5);
    endLife();
    EXPECT_EQ(5u, ledger(0, 0).produced) << "still to be read after the end";
    beginLife();
    EXPECT_EQ(0u, ledger(0, 0).produced);
}

}   // namespace

}   // namespace orvo::test

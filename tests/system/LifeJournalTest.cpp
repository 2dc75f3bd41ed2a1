#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

constexpr const char* kNoBoards[] = {
    "Brd_getBoardType boardIndex=1 -> -1", "Brd_getBoardType boardIndex=2 -> -1",
    "Brd_getBoardType boardIndex=3 -> -1", "Brd_getBoardType boardIndex=4 -> -1",
    "Brd_getBoardType boardIndex=5 -> -1", "Brd_getBoardType boardIndex=6 -> -1",
    "Brd_getBoardType boardIndex=7 -> -1",
};

/// One board with one process of two DMAs, numbered 3 and 4 at the board, 8 x 4 pixels of 8-bit grey.
class WholeLife : public SystemTest {
protected:
    WholeLife() { machine.oneBoard(Machine::process({Machine::dma(3), Machine::dma(4)})); }

    static Lines opening(const std::string& path)
    {
        const std::string information = "Brd_getSystemInformation board=null ";
        const std::string frequency = information +
                                      "code=100 property=0 boardIndex=0 buffer=set length=256 -> 0 "
                                      "length=10 buffer=\"125000000\"";
        Lines lines = {
            "Brd_InitLibraries directory=null -> 0",
            "Brd_InitLibraries directory=null -> 0",
            "Brd_getBoardType boardIndex=0 -> 2897",
            "Brd_InitEx path=\"" + path + "\" boardIndex=0 flags=0 -> 0",
            "Brd_getParameterWithType board=0 id=3070 dma=0 type=1 -> 0 value=1",
            "Brd_getParameterWithType board=0 id=3050 dma=0 type=1 -> 0 value=2",
            "Brd_getParameter board=0 id=3080 value=0 dma=0 -> 0 value=3",
            frequency,
            "Brd_getParameter board=0 id=3080 value=1 dma=0 -> 0 value=4",
            frequency,
            "Brd_getBoardType boardIndex=0 -> 2897",
            "Brd_getBoardNameByType type=2897 one=1 -> \"Orvo Gigabit 1\"",
            "Brd_getBoardType boardIndex=0 -> 2897",   // for the kind of its cameras
            "Brd_getParameterWithType board=0 id=3050 dma=0 type=1 -> 0 value=2",
            "Brd_getParameterWithType board=0 id=3050 dma=0 type=1 -> 0 value=2",
            "Brd_getParameterWithType board=0 id=3050 dma=0 type=1 -> 0 value=2",
        };
        lines.insert(lines.end(), std::begin(kNoBoards), std::end(kNoBoards));
        const Lines record = {
            "Brd_getParameter board=0 id=100 dma=3 -> 0 value=8",
            "Brd_getParameter board=0 id=200 dma=3 -> 0 value=4",
            information + "code=1012 property=0 boardIndex=0 buffer=set length=255 -> 0 length=47 "
                          "buffer=\"Orvo Gigabit 1, serial number SIM-0, simulated\"",
        };
        lines.insert(lines.end(), record.begin(), record.end());
        return lines;
    }

    std::string appletFile() const { return (machine.folder() / "board0-applet.hap").string(); }
};

TEST_F(WholeLife, MakesTheseCallsAtTheBoardAndNoOthers)
{
    const int64_t id = host.opened(0);
    EXPECT_EQ(takeJournal(), opening(appletFile()));

    ASSERT_EQ(host.setup(id, 8, 4, 2, 1), done());
    EXPECT_EQ(takeJournal(), (Lines{"Brd_setParameter board=0 id=100 value=8 dma=3 -> 0",
                                    "Brd_setParameter board=0 id=200 value=4 dma=3 -> 0",
                                    "Brd_setParameter board=0 id=300 value=2 dma=3 -> 0",
                                    "Brd_setParameter board=0 id=400 value=1 dma=3 -> 0",
                                    "Brd_getParameter board=0 id=700 dma=3 -> 0 value=3",
                                    "Brd_getParameter board=0 id=100 dma=3 -> 0 value=8",
                                    "Brd_getParameter board=0 id=200 dma=3 -> 0 value=4",
                                    "Brd_AllocMemHead board=0 totalSize=160 bufferCount=5 -> h1",
                                    "Brd_AddMem board=0 buffer=b0 size=32 index=0 head=h1 -> 0",
                                    "Brd_AddMem board=0 buffer=b1 size=32 index=1 head=h1 -> 1",
                                    "Brd_AddMem board=0 buffer=b2 size=32 index=2 head=h1 -> 2",
                                    "Brd_AddMem board=0 buffer=b3 size=32 index=3 head=h1 -> 3",
                                    "Brd_AddMem board=0 buffer=b4 size=32 index=4 head=h1 -> 4",
                                    "Brd_getParameter board=0 id=700 dma=4 -> 0 value=3",
                                    "Brd_getParameter board=0 id=100 dma=4 -> 0 value=8",
                                    "Brd_getParameter board=0 id=200 dma=4 -> 0 value=4",
                                    "Brd_AllocMemHead board=0 totalSize=160 bufferCount=5 -> h2",
                                    "Brd_AddMem board=0 buffer=b0 size=32 index=0 head=h2 -> 0",
                                    "Brd_AddMem board=0 buffer=b1 size=32 index=1 head=h2 -> 1",
                                    "Brd_AddMem board=0 buffer=b2 size=32 index=2 head=h2 -> 2",
                                    "Brd_AddMem board=0 buffer=b3 size=32 index=3 head=h2 -> 3",
                                    "Brd_AddMem board=0 buffer=b4 size=32 index=4 head=h2 -> 4"}));

    ASSERT_EQ(host.start(id), done());
    EXPECT_EQ(takeJournal(), (Lines{"Brd_registerApcHandler board=0 dma=3 control=set zero=0 -> 0",
                                    "Brd_AcquireEx board=0 dma=3 pictureCount=-1 mode=2 head=h1 -> 0",
                                    "Brd_registerApcHandler board=0 dma=4 control=set zero=0 -> 0",
                                    "Brd_AcquireEx board=0 dma=4 pictureCount=-1 mode=2 head=h2 -> 0"}));

    deliver(1, 3);
    const Lines picture = takeJournal();
    ASSERT_EQ(picture.size(), 3u);
    // The number that the first call answers goes into the second; it is not the picture's number.
    const std::string imageNumber = picture[0].substr(picture[0].rfind(' ') + 1);
    EXPECT_NE(imageNumber, "1");
    EXPECT_EQ(picture,
              (Lines{"Brd_getImageEx board=0 selector=220 pictureNumber=1 dma=3 timeout=0 head=h1 -> " +
                         imageNumber,
                     "Brd_getParameterEx board=0 id=22030 dma=3 head=h1 imageNumber=" + imageNumber +
                         " -> 0 value=4166666",
                     "Brd_getImagePtrEx board=0 pictureNumber=1 dma=3 head=h1 -> b0"}));

    ASSERT_EQ(host.waitForIntegration(id), image());
    EXPECT_EQ(takeJournal(), Lines());

    ASSERT_EQ(host.attributes(id), image());
    EXPECT_EQ(takeJournal(), (Lines{"Brd_getParameter board=0 id=100 dma=3 -> 0 value=8",
                                    "Brd_getParameter board=0 id=200 dma=3 -> 0 value=4",
                                    "Brd_getParameter board=0 id=100 dma=3 -> 0 value=8",
                                    "Brd_getParameter board=0 id=700 dma=3 -> 0 value=3",
                                    "Brd_getParameter board=0 id=100 dma=3 -> 0 value=8",
                                    "Brd_getParameter board=0 id=200 dma=3 -> 0 value=4",
                                    "Brd_getParameter board=0 id=300 dma=3 -> 0 value=2",
                                    "Brd_getParameter board=0 id=400 dma=3 -> 0 value=1"}));

    host.fetch(id, 32);
    const Lines fetched = takeJournal();
    ASSERT_EQ(fetched.size(), 3u);
    EXPECT_THAT(fetched[0],
                testing::StartsWith("Brd_getStatusEx board=0 code=40 imageNumber=0 dma=3 head=h1 -> "));
    EXPECT_EQ(fetched[1], "Brd_setStatusEx board=0 code=512 imageNumber=1 dma=3 head=h1 -> 0");
    EXPECT_THAT(fetched[2],
                testing::StartsWith("Brd_getStatusEx board=0 code=40 imageNumber=0 dma=3 head=h1 -> "));

    ASSERT_EQ(host.stop(id), done());
    EXPECT_EQ(takeJournal(), (Lines{"Brd_stopAcquireEx board=0 dma=3 head=h1 zero=0 -> 0",
                                    "Brd_registerApcHandler board=0 dma=3 control=null zero=0 -> 0",
                                    "Brd_stopAcquireEx board=0 dma=4 head=h2 zero=0 -> 0",
                                    "Brd_registerApcHandler board=0 dma=4 control=null zero=0 -> 0"}));

    ASSERT_EQ(host.release(id), done());
    EXPECT_EQ(takeJournal(),
              (Lines{"Brd_DelMem board=0 head=h1 index=0 -> 0", "Brd_DelMem board=0 head=h1 index=1 -> 0",
                     "Brd_DelMem board=0 head=h1 index=2 -> 0", "Brd_DelMem board=0 head=h1 index=3 -> 0",
                     "Brd_DelMem board=0 head=h1 index=4 -> 0", "Brd_FreeMemHead board=0 head=h1 -> 0",
                     "Brd_DelMem board=0 head=h2 index=0 -> 0", "Brd_DelMem board=0 head=h2 index=1 -> 0",
                     "Brd_DelMem board=0 head=h2 index=2 -> 0", "Brd_DelMem board=0 head=h2 index=3 -> 0",
                     "Brd_DelMem board=0 head=h2 index=4 -> 0", "Brd_FreeMemHead board=0 head=h2 -> 0",
                     "Brd_FreeGrabber board=0 -> 0", "Brd_FreeLibraries", "Brd_FreeLibraries"}));

    EXPECT_EQ(host.opened(0), id);   // the numbers begin anew
    EXPECT_EQ(takeJournal(), opening(appletFile()));
}

TEST_F(WholeLife, EndsWhileRunningByStoppingEveryPortBeforeAChannelGoes)
{
    const int64_t id = host.opened(0);
    ASSERT_EQ(host.setup(id, 8, 4), done());
    ASSERT_EQ(host.start(id), done());
    OrvoSim_answer("Brd_stopAcquireEx dma=4", 1, -50);   // stopped all the same, and tried again at its end
    OrvoSim_clearJournal();
    ASSERT_EQ(host.release(id), done());
    EXPECT_EQ(
        takeJournal("-Brd_DelMem"),
        (Lines{"Brd_stopAcquireEx board=0 dma=3 head=h1 zero=0 -> 0",
               "Brd_registerApcHandler board=0 dma=3 control=null zero=0 -> 0",
               "Brd_stopAcquireEx board=0 dma=4 head=h2 zero=0 -> -50",
               "Brd_registerApcHandler board=0 dma=4 control=null zero=0 -> 0",
               "Brd_FreeMemHead board=0 head=h1 -> 0", "Brd_stopAcquireEx board=0 dma=4 head=h2 zero=0 -> 0",
               "Brd_registerApcHandler board=0 dma=4 control=null zero=0 -> 0",
               "Brd_FreeMemHead board=0 head=h2 -> 0", "Brd_FreeGrabber board=0 -> 0", "Brd_FreeLibraries",
               "Brd_FreeLibraries"}));
}

TEST_F(WholeLife, FreesNoRingThatWasNeverBuilt)
{
    const int64_t id = host.opened(0);
    EXPECT_EQ(host.start(id), fails("Acquisistion is not setup"));
    OrvoSim_clearJournal();
    ASSERT_EQ(host.release(id), done());
    EXPECT_EQ(takeJournal(),
              (Lines{"Brd_FreeGrabber board=0 -> 0", "Brd_FreeLibraries", "Brd_FreeLibraries"}));
}

}   // namespace

}   // namespace orvo::test

#include <array>
#include <thread>

#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using ChannelRing = OneChannel;

constexpr const char* kRingCalls = "Brd_AllocMemHead Brd_AddMem Brd_DelMem Brd_FreeMemHead Brd_AcquireEx "
                                   "Brd_stopAcquireEx Brd_registerApcHandler";

TEST_F(ChannelRing, IsRebuiltWhileRunningBetweenAStopAndAStart)
{
    ASSERT_EQ(host.start(id), done());
    deliver(2);
    OrvoSim_clearJournal();
    ASSERT_EQ(host.write(id, "BufferCount", "1"), done());
    EXPECT_EQ(takeJournal(kRingCalls),
              (Lines{"Brd_stopAcquireEx board=0 dma=0 head=h1 zero=0 -> 0",
                     "Brd_registerApcHandler board=0 dma=0 control=null zero=0 -> 0",
                     "Brd_FreeMemHead board=0 head=h1 -> 0",
                     "Brd_AllocMemHead board=0 totalSize=32 bufferCount=1 -> h2",
                     "Brd_AddMem board=0 buffer=b0 size=32 index=0 head=h2 -> 0",
                     "Brd_registerApcHandler board=0 dma=0 control=set zero=0 -> 0",
                     "Brd_AcquireEx board=0 dma=0 pictureCount=-1 mode=2 head=h2 -> 0"}));
    EXPECT_EQ(host.read(id, "FrameCountSinceLastStart"), gives("0"));
    std::array<char, kImageSize> memory{};
    EXPECT_EQ(host.getImage(id, memory.data()), pending());   // the old images have gone with their ring
    EXPECT_EQ(host.stop(id), done());
}

TEST_F(ChannelRing, IsLeftAloneWhenTheBoardRefusesToStopForARebuild)
{
    ASSERT_EQ(host.start(id), done());
    OrvoSim_answer("Brd_stopAcquireEx", 1, -31);
    OrvoSim_clearJournal();
    EXPECT_EQ(host.write(id, "BufferCount", "2"), cannotWrite("brd error code: -31"));
    EXPECT_THAT(journal("Brd_AllocMemHead Brd_FreeMemHead"), testing::IsEmpty());
    EXPECT_EQ(host.read(id, "BufferCount"), gives("2"));
    OrvoSim_clearJournal();
    EXPECT_EQ(host.start(id), done());
    EXPECT_THAT(journal(), testing::IsEmpty());   // still running by its own account
    EXPECT_EQ(host.stop(id), done());
}

TEST_F(ChannelRing, IsStoppedAfterAFailedRebuildOrRestart)
{
    ASSERT_EQ(host.start(id), done());
    OrvoSim_answer("Brd_AddMem index=1", 1, -32);
    EXPECT_EQ(host.write(id, "BufferCount", "3"), cannotWrite("brd error code: -32"));
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));

    ASSERT_EQ(host.setup(id, kWidth, kHeight), done());
    ASSERT_EQ(host.start(id), done());
    OrvoSim_answer("Brd_AcquireEx", 1, -33);
    EXPECT_EQ(host.setup(id, kWidth, kHeight), fails("brd error code: -33"));
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    EXPECT_EQ(fetchNumber(), 1u);
}

TEST_F(ChannelRing, RefusesWhatTheBoardRefusesAndRecovers)
{
    OrvoSim_answer("Brd_AllocMemHead", 1, -34);
    EXPECT_EQ(host.setup(id, kWidth, kHeight), fails("brd error code: -34"));
    EXPECT_EQ(host.start(id), fails("Acquisistion is not setup"));

    EXPECT_THAT(host.setup(id, 60'000, 60'000).text, testing::StartsWith("brd error code: "));
    ASSERT_EQ(host.setup(id, kWidth, kHeight), done());
    for (const char* const tooMany : {"18446744073709551615", "1000001"})
        EXPECT_THAT(host.write(id, "BufferCount", tooMany).text,
                    testing::StartsWith("Feature could not be written. (brd error code: "));
    EXPECT_EQ(host.start(id), fails("Acquisistion is not setup"));
    EXPECT_EQ(host.write(id, "BufferCount", "0"), done());
    EXPECT_EQ(host.start(id), fails("Acquisistion is not setup"));
    EXPECT_EQ(host.write(id, "BufferCount", "5"), done());

    OrvoSim_answer("Brd_registerApcHandler control=set", 1, -35);
    EXPECT_EQ(host.start(id), fails("brd error code: -35"));
    OrvoSim_answer("Brd_AcquireEx", 1, -36);
    EXPECT_EQ(host.start(id), fails("brd error code: -36"));
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
    EXPECT_EQ(host.start(id), done());
    EXPECT_EQ(host.start(id), done());
}

TEST_F(ChannelRing, FillsTheBuffersThatAFailedRebuildMade)
{
    ASSERT_EQ(host.write(id, "AcquisitionStrategy", "OldestFirst"), done());
    ASSERT_EQ(host.setup(id, kWidth, kHeight), done());
    OrvoSim_answer("Brd_AddMem", 3, -37);
    ASSERT_EQ(host.setup(id, kWidth, kHeight), fails("brd error code: -37"));
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    EXPECT_EQ(fetchNumber(), 1u);
}

TEST_F(ChannelRing, RemovesItsHandlerEvenWhenTheBoardRefusesToStop)
{
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    OrvoSim_answer("Brd_stopAcquireEx", 1, -37);
    OrvoSim_answer("Brd_registerApcHandler control=null", 1, -38);
    OrvoSim_clearJournal();
    EXPECT_EQ(host.stop(id), fails("brd error code: -37"));
    EXPECT_EQ(takeJournal(kRingCalls),
              (Lines{"Brd_stopAcquireEx board=0 dma=0 head=h1 zero=0 -> -37",
                     "Brd_registerApcHandler board=0 dma=0 control=null zero=0 -> -38"}));
    EXPECT_EQ(host.waitForIntegration(id), image());   // it still counts as running
    EXPECT_EQ(host.stop(id), done());
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
}

TEST_F(ChannelRing, LosesTheBufferOfAPictureThatComesDuringTheStartUntilTheRebuild)
{
    ASSERT_EQ(host.write(id, "BufferCount", "2"), done());
    OrvoSim_hold("Brd_AcquireEx", 1, ORVO_SIM_AT_EXIT);
    std::thread starting([&] { EXPECT_EQ(host.start(id), done()); });
    ASSERT_EQ(OrvoSim_waitUntilHeld("Brd_AcquireEx", 30'000), 1);
    deliver(1);   // the board runs already, the port doesn't know it yet
    OrvoSim_letGo("Brd_AcquireEx");
    starting.join();
    EXPECT_EQ(host.read(id, "FrameCountSinceLastStart"), gives("0"));
    EXPECT_EQ(OrvoSim_deliver(0, 0, 2), 1);   // one block of two is left to the board
    EXPECT_EQ(fetchNumber(), 2u);
    ASSERT_EQ(host.setup(id, kWidth, kHeight), done());
    EXPECT_EQ(OrvoSim_deliver(0, 0, 2), 2);
}

TEST_F(ChannelRing, HandsOnNoErrorAndNoPictureOfAnUnknownBuffer)
{
    ASSERT_EQ(host.start(id), done());
    OrvoSim_clearJournal();
    EXPECT_EQ(OrvoSim_callBack(0, 0, -2120), 0);   // an error in the place of a picture's number
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(host.read(id, "FrameCountSinceLastStart"), gives("0"));
    OrvoSim_answer("Brd_getImagePtrEx", 1, 0);
    deliver(1);
    EXPECT_EQ(host.read(id, "FrameCountSinceLastStart"), gives("1"));
    EXPECT_EQ(host.waitForIntegration(id), pending());
    deliver(1);
    EXPECT_EQ(fetchNumber(), 2u);
}

TEST_F(ChannelRing, CountsThePixelsOfABufferIn32Bits)
{
    const uint32_t wide = 0x4000'0001;   // times 4 rows
    OrvoSim_answerWith("Brd_getParameter id=100", 1, 0, &wide, sizeof wide);
    OrvoSim_clearJournal();
    EXPECT_EQ(host.setup(id, kWidth, kHeight), done());
    EXPECT_EQ(takeJournal("Brd_AllocMemHead"),
              Lines{"Brd_AllocMemHead board=0 totalSize=20 bufferCount=5 -> h2"});
}

TEST_F(ChannelRing, AsksForTheLargestSizeWhereItsBytesFitNoNumber)
{
    OrvoSim_clearJournal();
    const char* const wrapsToZero = "576460752303423488";   // times 32 bytes
    EXPECT_THAT(host.write(id, "BufferCount", wrapsToZero).text, testing::HasSubstr("brd error code: "));
    EXPECT_THAT(journal("Brd_AllocMemHead"),
                testing::ElementsAre("Brd_AllocMemHead board=0 totalSize=18446744073709551615 "
                                     "bufferCount=576460752303423488 -> null"));
}

TEST_F(ChannelRing, WritesTheBytesOfTheLastBuildWhateverTheGeometrySays)
{
    // An applet parameter can change the geometry without the adapter.
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    ASSERT_EQ(host.stop(id), done());
    const uint32_t wider = 16;
    OrvoSim_answerWith("Brd_getParameter id=100", 0, 0, &wider, sizeof wider);
    ASSERT_EQ(host.attributes(id), image());
    EXPECT_EQ(host.attributes().width, 16u);
    Canaries memory(kImageSize);
    EXPECT_EQ(host.getImage(id, memory.data()), image());
}

// A host that changes the geometry on one thread while another is inside an image call.
constexpr uint32_t kLargeWidth = 64;
constexpr uint32_t kLargeHeight = 48;
constexpr const char* kFormatRead = "Brd_getParameter board=0 id=700";

/// Another thread has asked for the attributes of a large picture and is held in the middle of it.
class StalePicture : public OneChannel {
protected:
    void askForAttributes(int32_t recordSize)
    {
        ASSERT_EQ(host.setup(id, kLargeWidth, kLargeHeight), done());
        ASSERT_EQ(host.start(id), done());
        deliver(1);
        ASSERT_EQ(host.stop(id), done());
        OrvoSim_hold(kFormatRead, 1, ORVO_SIM_AT_ENTRY);
        m_attributes.size = recordSize;
        m_asking = std::thread([this] {
            std::array<char, AIK_ERRSTR_SIZE> text{};
            m_code = GetImageAttributes(text.data(), id, &m_attributes, &m_result);
        });
        ASSERT_EQ(OrvoSim_waitUntilHeld(kFormatRead, 30'000), 1);
    }

    Answer attributesAnswer()
    {
        OrvoSim_letGo(kFormatRead);
        m_asking.join();
        return {m_code, m_result, ""};
    }

    ~StalePicture() override
    {
        if (m_asking.joinable())
            attributesAnswer();
    }

    csAIK_ImageAttributes m_attributes{};

private:
    std::thread m_asking;
    int32_t m_code = AIK_FAILED;
    uint32_t m_result = AIK_ACQ_FAILED;
};

TEST_F(StalePicture, IsNotWrittenOnceASmallerRingIsBuilt)
{
    askForAttributes(sizeof(csAIK_ImageAttributes));
    ASSERT_EQ(host.setup(id, kWidth, kHeight), done());
    Canaries memory(size_t{kLargeWidth} * kLargeHeight);
    EXPECT_EQ(host.getImage(id, memory.data()), pending());
    EXPECT_TRUE(memory.isUntouchedFrom(0));
    EXPECT_EQ(attributesAnswer(), pending());   // there is no picture left whose time it could tell
    EXPECT_EQ(m_attributes.imageWidth, kWidth);
}

TEST_F(StalePicture, IsNotWrittenAfterARebuildThatFailed)
{
    askForAttributes(sizeof(csAIK_ImageAttributes));
    OrvoSim_answer("Brd_AllocMemHead", 1, -34);
    ASSERT_EQ(host.setup(id, kWidth, kHeight), fails("brd error code: -34"));
    Canaries memory(size_t{kLargeWidth} * kLargeHeight);
    EXPECT_EQ(host.getImage(id, memory.data()), pending());
    EXPECT_TRUE(memory.isUntouchedFrom(0));
}

TEST_F(StalePicture, IsNotMissedByARecordWithoutATimeStamp)
{
    askForAttributes(0x2C);
    ASSERT_EQ(host.setup(id, kWidth, kHeight), done());
    EXPECT_EQ(attributesAnswer(), image());
}

}   // namespace

}   // namespace orvo::test

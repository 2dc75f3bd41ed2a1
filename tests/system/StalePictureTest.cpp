// A host that changes the geometry on one thread while another is inside an image call.
#include <array>
#include <thread>

#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

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

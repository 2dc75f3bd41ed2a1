#include <array>
#include <cstring>

#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

constexpr int64_t kNoChannel = 4711;

/// A channel record of some size in memory that holds a whole one, between canaries.
class Record {
public:
    explicit Record(int32_t size) { std::memcpy(m_memory.data(), &size, sizeof size); }

    csAIK_ChannelRecord* get() { return reinterpret_cast<csAIK_ChannelRecord*>(m_memory.data()); }

    /// Which 8-byte words from 0x008 to the end of the pointers were written.
    bool isWritten(size_t offset) const
    {
        const auto bytes = m_memory.bytes(sizeof(csAIK_ChannelRecord));
        return bytes[offset] != Canaries::kCanary || bytes[offset + 1] != Canaries::kCanary;
    }

private:
    Canaries m_memory{sizeof(csAIK_ChannelRecord)};
};

class Interface : public SystemTest {
protected:
    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    uint32_t acqResult = 77;

    std::string failure() const { return errstr.data(); }
};

TEST_F(Interface, RefusesEachNullPointerWithItsOwnText)
{
    char* const e = errstr.data();
    std::array<char, AIK_NAME_SIZE> text{};
    const auto refused = [&](int32_t code) { return code == AIK_FAILED ? failure() : "success"; };

    EXPECT_EQ(refused(adapter.getVideoChannel(e, 0, nullptr)), "Video channel pointer is invalid");
    EXPECT_EQ(refused(adapter.setupCommonParams(e, 1, nullptr)), "csAIK_CommonParams is an invalid pointer");
    EXPECT_EQ(refused(adapter.getImage(e, 1, text.data(), nullptr)), "acqResult is an invalid Pointer");
    EXPECT_EQ(refused(adapter.waitForIntegration(e, 1, nullptr)), "acqResult is an invalid Pointer");
    EXPECT_EQ(refused(adapter.getImageAttributes(e, 1, nullptr, nullptr)), "acqResult is an invalid Pointer");
    EXPECT_EQ(refused(adapter.getImageAttributes(e, 1, nullptr, &acqResult)),
              "csAIK_ImageAttributes pointer is not valid");
    EXPECT_EQ(acqResult, AIK_ACQ_FAILED);
    EXPECT_EQ(refused(adapter.executeCommand(e, 1, nullptr)), "Feature name is an invalid ptr");
    EXPECT_EQ(refused(adapter.readValue(e, 1, nullptr, text.data())), "Feature name is an invalid ptr");
    EXPECT_EQ(refused(adapter.writeValue(e, 1, nullptr, "1")), "Feature name is an invalid ptr");
    EXPECT_EQ(refused(adapter.writeValue(e, 1, "BufferCount", nullptr)), "Value ptr is invalid");
    EXPECT_EQ(refused(adapter.getFeatureName(e, 1, 0, nullptr)), "Feature name is an invalid ptr");
    EXPECT_EQ(refused(adapter.getFeatureType(e, 1, nullptr, &acqResult)),
              "Feature name is an invalid pointer");
    EXPECT_EQ(refused(adapter.getFeatureType(e, 1, "X", nullptr)), "Feature type is an invalid pointer");
    EXPECT_EQ(refused(adapter.getFeatureAttr(e, 1, nullptr, 1, text.data())),
              "Feature name is an invalid pointer");
    EXPECT_EQ(refused(adapter.getFeatureAttr(e, 1, "X", 1, nullptr)), "Invalid result pointer");
    EXPECT_EQ(refused(adapter.getValidEnum(e, 1, nullptr, 0, text.data())),
              "Feature name is an invalid pointer");
    EXPECT_EQ(refused(adapter.getValidEnum(e, 1, "X", 0, nullptr)), "Value pointer is invalid");
}

TEST_F(Interface, ChecksErrstrBeforeAllElseAndThenHasNowhereToWrite)
{
    csAIK_ImageAttributes attributes{};
    csAIK_CommonParams params{};
    uint32_t type = 0;
    EXPECT_EQ(adapter.getVideoChannel(nullptr, 0, nullptr), AIK_FAILED);
    EXPECT_EQ(adapter.setupCommonParams(nullptr, 1, &params), AIK_FAILED);
    EXPECT_EQ(adapter.startAcquisition(nullptr, 1), AIK_FAILED);
    EXPECT_EQ(adapter.stopAcquisition(nullptr, 1), AIK_FAILED);
    EXPECT_EQ(adapter.executeCommand(nullptr, 1, "X"), AIK_FAILED);
    EXPECT_EQ(adapter.readValue(nullptr, 1, "X", nullptr), AIK_FAILED);
    EXPECT_EQ(adapter.writeValue(nullptr, 1, "X", "1"), AIK_FAILED);
    EXPECT_EQ(adapter.getFeatureName(nullptr, 1, 0, nullptr), AIK_FAILED);
    EXPECT_EQ(adapter.getFeatureType(nullptr, 1, "X", &type), AIK_FAILED);
    EXPECT_EQ(adapter.getFeatureAttr(nullptr, 1, "X", 1, nullptr), AIK_FAILED);
    EXPECT_EQ(adapter.getValidEnum(nullptr, 1, "X", 0, nullptr), AIK_FAILED);
    EXPECT_EQ(adapter.getImageAttributes(nullptr, 1, &attributes, &acqResult), AIK_FAILED);
    EXPECT_EQ(acqResult, AIK_ACQ_FAILED);   // the failure still has its word
    EXPECT_EQ(adapter.getImage(nullptr, 1, nullptr, nullptr), AIK_FAILED);
    EXPECT_EQ(adapter.waitForIntegration(nullptr, 1, nullptr), AIK_FAILED);
    EXPECT_EQ(adapter.releaseVideoChannel(nullptr, 1), AIK_FAILED);
}

TEST_F(OneChannel, RefusesAnUnknownIdEverywhereAndKeepsTheOpenChannel)
{
    const auto invalid = fails("Invalid channelID");
    std::array<char, kImageSize> image{};
    EXPECT_EQ(host.setup(kNoChannel, 8, 4), invalid);
    EXPECT_EQ(host.start(kNoChannel), invalid);
    EXPECT_EQ(host.stop(kNoChannel), invalid);
    EXPECT_EQ(host.execute(kNoChannel, "X"), invalid);
    EXPECT_EQ(host.read(kNoChannel, "X"), invalid);
    EXPECT_EQ(host.write(kNoChannel, "X", "1"), invalid);
    EXPECT_EQ(host.featureName(kNoChannel, 0), invalid);
    EXPECT_EQ(host.featureType(kNoChannel, "X"), invalid);
    EXPECT_EQ(host.attribute(kNoChannel, "X", 1), invalid);
    EXPECT_EQ(host.validEnum(kNoChannel, "X", 0), invalid);
    EXPECT_EQ(host.getImage(kNoChannel, image.data()), imageFails("Invalid channelID"));
    EXPECT_EQ(host.waitForIntegration(kNoChannel), imageFails("Invalid channelID"));
    EXPECT_EQ(host.attributes(kNoChannel), imageFails("Invalid channelID"));
    EXPECT_EQ(host.release(kNoChannel), invalid);
    EXPECT_EQ(host.read(id, "BufferCount"), gives("5"));
}

TEST_F(OneChannel, CutsALongFailureToTheHostsBuffer)
{
    const std::string name(300, 'x');
    const std::string text = "Cannot find feature with the name: " + name;
    EXPECT_EQ(host.read(id, name.c_str()), fails(text.substr(0, 255)));
}

TEST_F(OneChannel, RefusesToOpenTwiceButTellsTheId)
{
    EXPECT_EQ(host.open(0), fails("Handle already exists"));
    EXPECT_EQ(host.record().channelID, id);
    EXPECT_EQ(host.open(1), fails("index is not valid"));
    EXPECT_EQ(host.open(-1), fails("index is not valid"));
}

TEST_F(SystemTest, ACallBeforeTheFirstOpenLeavesAnEmptyTableUntilAFailingRelease)
{
    machine.oneBoard(Machine::process({Machine::dma()}));
    EXPECT_EQ(host.start(1), fails("Invalid channelID"));
    EXPECT_EQ(host.open(0), fails("index is not valid"));
    EXPECT_EQ(host.release(1), fails("Invalid channelID"));
    EXPECT_EQ(host.open(0), done());
}

TEST_F(SystemTest, AMachineWithoutBoardsHasNoChannelAndEndsWithOneFailingRelease)
{
    machine.boards({});
    EXPECT_EQ(host.open(0), fails("index is not valid"));
    EXPECT_EQ(host.release(0), fails("Invalid channelID"));
    EXPECT_THAT(journal("Brd_InitLibraries Brd_FreeLibraries"), testing::SizeIs(4));
}

TEST_F(Interface, StoresTheLaterFunctionsOnlyInALargerRecord)
{
    machine.oneBoard(Machine::process({Machine::dma()}));
    const auto pointersAt = [](const Record& record, size_t first, size_t last) {
        size_t written = 0;
        for (size_t offset = first; offset <= last; offset += sizeof(void*))
            written += record.isWritten(offset) ? 1 : 0;
        return written;
    };
    Record small(0x260);
    ASSERT_EQ(adapter.getVideoChannel(errstr.data(), 0, small.get()), AIK_OK);
    const int64_t id = small.get()->channelID;
    EXPECT_EQ(pointersAt(small, 0x010, 0x018), 2u);
    EXPECT_FALSE(small.isWritten(0x020));   // WaitForIntegration is found by its name only
    EXPECT_EQ(pointersAt(small, 0x028, 0x050), 6u);
    EXPECT_EQ(pointersAt(small, 0x280, 0x2A0), 0u);
    EXPECT_EQ(small.get()->width, 8);
    EXPECT_EQ(small.get()->height, 4);
    EXPECT_EQ(small.get()->failed, 0);
    EXPECT_STREQ(small.get()->name, "Orvo Gigabit 1 process: 0 dma: 0");

    ASSERT_EQ(adapter.releaseVideoChannel(errstr.data(), id), AIK_OK);
    Record large(0x261);
    ASSERT_EQ(adapter.getVideoChannel(errstr.data(), 0, large.get()), AIK_OK);
    EXPECT_EQ(pointersAt(large, 0x280, 0x2A0), 5u);
    EXPECT_EQ(large.get()->size, 0x261);
    EXPECT_FALSE(large.isWritten(0x258));
    EXPECT_FALSE(large.isWritten(0x278));
    EXPECT_EQ(large.get()->getFeatureName, adapter.getFeatureName);
    EXPECT_EQ(large.get()->getFeatureType, adapter.getFeatureType);
    EXPECT_EQ(large.get()->getValidEnum, adapter.getValidEnum);
    EXPECT_EQ(large.get()->getFeatureAttr, adapter.getFeatureAttr);
    EXPECT_EQ(large.get()->releaseVideoChannel, adapter.releaseVideoChannel);
    EXPECT_EQ(large.get()->setupCommonParams, adapter.setupCommonParams);
    EXPECT_EQ(large.get()->getImageAttributes, adapter.getImageAttributes);
    EXPECT_EQ(large.get()->getImage, adapter.getImage);
    EXPECT_EQ(large.get()->startAcquisition, adapter.startAcquisition);
    EXPECT_EQ(large.get()->stopAcquisition, adapter.stopAcquisition);
    EXPECT_EQ(large.get()->executeCommand, adapter.executeCommand);
    EXPECT_EQ(large.get()->readValue, adapter.readValue);
    EXPECT_EQ(large.get()->writeValue, adapter.writeValue);
    EXPECT_EQ(adapter.releaseVideoChannel(errstr.data(), large.get()->channelID), AIK_OK);
}

TEST_F(OneChannel, WritesTheTimeStampOnlyIntoALargerAttributeRecord)
{
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    for (const int32_t size : {0x2C, 0x2D}) {
        Canaries memory(sizeof(csAIK_ImageAttributes));
        std::memcpy(memory.data(), &size, sizeof size);
        std::array<char, AIK_ERRSTR_SIZE> errstr{};
        uint32_t acqResult = 0;
        auto* const attributes = reinterpret_cast<csAIK_ImageAttributes*>(memory.data());
        ASSERT_EQ(adapter.getImageAttributes(errstr.data(), id, attributes, &acqResult), AIK_OK);
        EXPECT_EQ(memory.isUntouchedFrom(0x2C), size == 0x2C);
    }
    ASSERT_EQ(host.attributes(id), image());
    EXPECT_GT(host.attributes().timestamp, 0u);
}

TEST_F(OneChannel, DescribesTheImageFieldByField)
{
    ASSERT_EQ(host.setup(id, kWidth, kHeight, 2, 1), done());
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    ASSERT_EQ(host.attributes(id), image());
    const csAIK_ImageAttributes& a = host.attributes();
    EXPECT_EQ((std::array{a.width, a.widthAgain, a.imageWidth}), (std::array{8u, 8u, 8u}));
    EXPECT_EQ((std::array{a.height, a.imageHeight}), (std::array{4u, 4u}));
    EXPECT_EQ((std::array{a.xOffset, a.imageXOffset, a.yOffset, a.imageYOffset}),
              (std::array{2u, 2u, 1u, 1u}));
    EXPECT_EQ(a.pixelFormat, AIK_PIXEL_MONO8);

    OrvoSim_answer("Brd_getParameter id=400", 1, -5);   // the Y offset: then both read 0
    ASSERT_EQ(host.attributes(id), image());
    EXPECT_EQ((std::array{a.xOffset, a.imageXOffset, a.yOffset, a.imageYOffset}),
              (std::array{0u, 0u, 0u, 0u}));
}

TEST_F(OneChannel, ReportsEachGeometryFailureInItsOwnWords)
{
    const auto whenRefused = [&](const char* call) {
        OrvoSim_clearScript();
        OrvoSim_answer(call, 1, -7);
    };
    whenRefused("Brd_setParameter id=100");
    EXPECT_EQ(host.setup(id, 8, 4), fails("Cannot set BRD_WIDTH"));
    whenRefused("Brd_setParameter id=200");
    EXPECT_EQ(host.setup(id, 8, 4), fails("Cannot set BRD_HEIGHT"));
    whenRefused("Brd_getParameter id=700");
    EXPECT_EQ(host.setup(id, 8, 4), fails("Cannot get BRD_FORMAT"));
    whenRefused("Brd_getParameter id=100");
    EXPECT_EQ(host.setup(id, 8, 4), fails("Cannot get BRD_WIDTH"));
    whenRefused("Brd_getParameter id=200");
    EXPECT_EQ(host.setup(id, 8, 4), fails("Cannot get BRD_HEIGHT"));
    OrvoSim_clearScript();
    EXPECT_EQ(host.setup(id, 8, 4), done());
}

}   // namespace

}   // namespace orvo::test

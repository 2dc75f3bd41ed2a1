#include <array>
#include <cstring>

#include "os/Os.h"
#include "tests/support/Places.h"
#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using Interface = OneChannel;

TEST_F(SystemTest, EachNullPointerIsRefusedWithItsOwnText)
{
    std::array<char, AIK_NAME_SIZE> memory{};
    char* const text = memory.data();
    uint32_t word = 0;
    const std::pair<Answer, const char*> refusals[] = {
        {Host::call(GetVideoChannel, 0, nullptr), "Video channel pointer is invalid"},
        {Host::call(SetupCommonParams, 1, nullptr), "csAIK_CommonParams is an invalid pointer"},
        {Host::call(GetImage, 1, text, nullptr), "acqResult is an invalid Pointer"},
        {Host::call(WaitForIntegration, 1, nullptr), "acqResult is an invalid Pointer"},
        {Host::call(GetImageAttributes, 1, nullptr, nullptr), "acqResult is an invalid Pointer"},
        {Host::call(GetImageAttributes, 1, nullptr, &word), "csAIK_ImageAttributes pointer is not valid"},
        {Host::call(ExecuteCommand, 1, nullptr), "Feature name is an invalid ptr"},
        {Host::call(ReadValue, 1, nullptr, text), "Feature name is an invalid ptr"},
        {Host::call(WriteValue, 1, nullptr, "1"), "Feature name is an invalid ptr"},
        {Host::call(WriteValue, 1, "BufferCount", nullptr), "Value ptr is invalid"},
        {Host::call(GetFeatureName, 1, 0, nullptr), "Feature name is an invalid ptr"},
        {Host::call(GetFeatureType, 1, nullptr, &word), "Feature name is an invalid pointer"},
        {Host::call(GetFeatureType, 1, "X", nullptr), "Feature type is an invalid pointer"},
        {Host::call(GetFeatureAttr, 1, nullptr, 1, text), "Feature name is an invalid pointer"},
        {Host::call(GetFeatureAttr, 1, "X", 1, nullptr), "Invalid result pointer"},
        {Host::call(GetValidEnum, 1, nullptr, 0, text), "Feature name is an invalid pointer"},
        {Host::call(GetValidEnum, 1, "X", 0, nullptr), "Value pointer is invalid"},
    };
    for (const auto& [answer, refusal] : refusals)
        EXPECT_EQ(answer, fails(refusal));
    EXPECT_EQ(word, AIK_ACQ_FAILED);
}

TEST_F(Interface, RefusesCallsWithoutErrstrAndOfAnUnknownChannel)
{
    constexpr int64_t kNoChannel = 4711;
    std::array<char, AIK_NAME_SIZE> memory{};
    char* const text = memory.data();
    const csAIK_CommonParams params{};
    csAIK_ChannelRecord record{};
    csAIK_ImageAttributes attributes{};
    uint32_t word = 0;
    const auto refused = [&](auto function, auto... arguments) {
        EXPECT_EQ(function(nullptr, id, arguments...), AIK_FAILED);
        EXPECT_EQ(Host::call(function, kNoChannel, arguments...), fails("Invalid channelID"));
    };
    const auto imageRefused = [&](auto function, auto... arguments) {
        std::array<uint32_t, 2> results{};
        EXPECT_EQ(function(nullptr, id, arguments..., &results[0]), AIK_FAILED);
        EXPECT_EQ(Host::call(function, kNoChannel, arguments..., &results[1]), fails("Invalid channelID"));
        EXPECT_EQ(results, (std::array{AIK_ACQ_FAILED, AIK_ACQ_FAILED}));
    };
    EXPECT_EQ(GetVideoChannel(nullptr, 1, &record), AIK_FAILED);
    refused(SetupCommonParams, &params);
    refused(StartAcquisition);
    EXPECT_EQ(host.stop(id), fails("Acquisition is not running"));
    ASSERT_EQ(host.start(id), done());
    refused(StopAcquisition);
    refused(ExecuteCommand, "Detect");
    refused(WriteValue, "BufferCount", "3");
    refused(ReadValue, "BufferCount", text);
    refused(GetFeatureName, 0u, text);
    refused(GetFeatureType, "BufferCount", &word);
    refused(GetFeatureAttr, "BufferCount", AIK_ATTR_DESCRIPTION, text);
    refused(GetValidEnum, "Transformation", 0u, text);
    imageRefused(GetImage, text);
    imageRefused(WaitForIntegration);
    imageRefused(GetImageAttributes, &attributes);
    refused(ReleaseVideoChannel);
    EXPECT_EQ(GetImage(nullptr, id, nullptr, nullptr), AIK_FAILED);
    EXPECT_EQ(host.read(id, "BufferCount"), gives("5"));
    EXPECT_EQ(host.stop(id), done());
}

TEST_F(Interface, StoresTheLaterFunctionsOnlyInALargerRecord)
{
    const char* const none = "";   // nothing is written there
    const std::pair<size_t, Lines> words[] = {
        {0x010, {"SetupCommonParams", "GetImageAttributes", none, "GetImage", "StartAcquisition"}},
        {0x038, {"StopAcquisition", "ExecuteCommand", "ReadValue", "WriteValue"}},
        {0x258, {none, none, none}},
        {0x278, {none}},
        {0x280,
         {"GetFeatureName", "GetFeatureType", "GetValidEnum", "GetFeatureAttr", "ReleaseVideoChannel"}},
    };
    auto* const adapter = os::loadLibrary(libraryBesideUs("OrvoCognexAdapter"));
    ASSERT_EQ(host.release(id), done());
    for (const int32_t size : {0x260, 0x261}) {
        SCOPED_TRACE(size);
        Canaries memory(sizeof(csAIK_ChannelRecord));
        std::memcpy(memory.data(), &size, sizeof size);
        auto* const record = reinterpret_cast<csAIK_ChannelRecord*>(memory.data());
        ASSERT_EQ(Host::call(GetVideoChannel, 0, record), done());
        for (auto [offset, names] : words)
            for (const std::string& name : names) {
                os::Symbol expected = nullptr;
                std::memset(&expected, Canaries::kCanary, sizeof expected);
                if (name != none && (offset < 0x280 || size > 0x260))
                    expected = os::findSymbol(adapter, name.c_str());
                EXPECT_EQ(std::memcmp(memory.data() + offset, &expected, sizeof expected), 0) << offset;
                offset += sizeof expected;
            }
        EXPECT_EQ(record->size, size);
        EXPECT_EQ(record->channelID, id);
        EXPECT_EQ((std::array{record->width, record->height, record->failed}), (std::array{8, 4, 0}));
        EXPECT_STREQ(record->name, "Orvo Gigabit 1 process: 0 dma: 0");
        EXPECT_EQ(host.release(record->channelID), done());
    }
}

TEST_F(Interface, WritesTheTimeStampOnlyIntoALargerAttributeRecord)
{
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    for (const int32_t size : {0x2C, 0x2D}) {
        Canaries memory(sizeof(csAIK_ImageAttributes));
        std::memcpy(memory.data(), &size, sizeof size);
        auto* const attributes = reinterpret_cast<csAIK_ImageAttributes*>(memory.data());
        uint32_t acqResult = 0;
        ASSERT_EQ(Host::call(GetImageAttributes, id, attributes, &acqResult), done());
        EXPECT_EQ(memory.isUntouchedFrom(0x2C), size == 0x2C);
    }
}

TEST_F(Interface, DescribesTheImageFieldByField)
{
    ASSERT_EQ(host.setup(id, kWidth, kHeight, 2, 1), done());
    ASSERT_EQ(host.start(id), done());
    deliver(1);
    const csAIK_ImageAttributes& a = host.attributes();
    const auto offsets = [&] { return std::array{a.xOffset, a.imageXOffset, a.yOffset, a.imageYOffset}; };
    ASSERT_EQ(host.attributes(id), image());
    EXPECT_EQ((std::array{a.width, a.widthAgain, a.imageWidth}), (std::array{8u, 8u, 8u}));
    EXPECT_EQ((std::array{a.height, a.imageHeight}), (std::array{4u, 4u}));
    EXPECT_EQ(offsets(), (std::array{2u, 2u, 1u, 1u}));
    EXPECT_EQ(a.pixelFormat, AIK_PIXEL_MONO8);
    for (const char* refused : {"Brd_getParameter id=300", "Brd_getParameter id=400"}) {
        OrvoSim_answer(refused, 1, -5);
        ASSERT_EQ(host.attributes(id), image());
        EXPECT_EQ(offsets(), (std::array{0u, 0u, 0u, 0u}))
            << refused;   // neither has what the host handed in
    }
}

TEST_F(Interface, ReportsEachGeometryFailureInItsOwnWords)
{
    const std::pair<const char*, const char*> failures[] = {
        {"Brd_setParameter id=100", "Cannot set BRD_WIDTH"},
        {"Brd_setParameter id=200", "Cannot set BRD_HEIGHT"},
        {"Brd_getParameter id=700", "Cannot get BRD_FORMAT"},
        {"Brd_getParameter id=100", "Cannot get BRD_WIDTH"},
        {"Brd_getParameter id=200", "Cannot get BRD_HEIGHT"},
    };
    for (const auto& [call, text] : failures) {
        OrvoSim_answer(call, 1, -7);
        EXPECT_EQ(host.setup(id, 8, 4), fails(text));
    }
    EXPECT_EQ(host.setup(id, 8, 4), done());
}

}   // namespace

}   // namespace orvo::test

#include <array>
#include <cstring>
#include <map>
#include <span>

#include <gmock/gmock.h>

#include "aik/aik.hpp"

namespace aik {
namespace {

constexpr uint32_t kImagePixels = 10;

// What an adapter answers next. No board would do it at the moment when a test needs it.
struct {
    bool isPending = false;
    bool isRingFull = false;
    bool isBoardMissing = false;
    uint8_t fetched = 0;
    std::map<std::string, std::string> features;
    std::vector<int64_t> released;
} g_adapter;

int32_t refuse(char* errstr, const char* text)
{
    std::strcpy(errstr, text);
    return AIK_FAILED;
}

int32_t answerOpen(char* errstr, int32_t index, csAIK_ChannelRecord* record)
{
    if (g_adapter.isBoardMissing || index > 1)
        return refuse(errstr, "index is not valid");
    record->channelID = index + 1;
    record->width = kImagePixels;
    record->height = 1;
    return AIK_OK;
}

int32_t answerRelease(char* /*errstr*/, int64_t channelID)
{
    g_adapter.released.push_back(channelID);
    return AIK_OK;
}

int32_t answerAttributes(char* errstr, int64_t /*channelID*/, csAIK_ImageAttributes* attributes,
                         uint32_t* result)
{
    *result = g_adapter.isPending ? AIK_ACQ_PENDING : AIK_ACQ_COMPLETED;
    attributes->pixelFormat = AIK_PIXEL_MONO16;
    attributes->timestamp = 77;
    return g_adapter.isRingFull ? refuse(errstr, "Acquisistion is not setup") : AIK_OK;
}

// There is always an image: one may come right after the attributes were asked for in vain.
int32_t answerImage(char* /*errstr*/, int64_t /*channelID*/, void* image, uint32_t* result)
{
    *result = AIK_ACQ_COMPLETED;
    std::memset(image, ++g_adapter.fetched, size_t{2} * kImagePixels);
    return AIK_OK;
}

int32_t answerRead(char* /*errstr*/, int64_t /*channelID*/, const char* feature, char* value)
{
    std::strcpy(value, g_adapter.features[feature].c_str());
    return AIK_OK;
}

int32_t answerWrite(char* /*errstr*/, int64_t /*channelID*/, const char* feature, const char* value)
{
    g_adapter.features[feature] = value;
    return AIK_OK;
}

class View : public testing::Test {
protected:
    View() { g_adapter = {}; }

    static Exports exports()
    {
        Exports exports;
        exports.GetVideoChannel = answerOpen;
        exports.ReleaseVideoChannel = answerRelease;
        exports.SetupCommonParams = [](char*, int64_t, const csAIK_CommonParams*) -> int32_t {
            return AIK_OK;
        };
        exports.GetImageAttributes = answerAttributes;
        exports.GetImage = answerImage;
        exports.ReadValue = answerRead;
        exports.WriteValue = answerWrite;
        return exports;
    }

    const Adapter m_adapter{exports()};
};

TEST_F(View, FetchesNoPictureWhileItsAttributesArePending)
{
    Channel channel = m_adapter.open(0);
    EXPECT_THROW(channel.grab(), std::logic_error);   // there is no memory yet
    channel.setup();
    g_adapter.isPending = true;
    EXPECT_FALSE(channel.grab());
    EXPECT_EQ(g_adapter.fetched, 0);

    g_adapter.isPending = false;
    const auto picture = channel.grab();
    ASSERT_TRUE(picture);
    const std::span<const uint8_t> bytes = picture->bytes;
    EXPECT_THAT(bytes, testing::AllOf(testing::SizeIs(2 * kImagePixels), testing::Each(1)));
    EXPECT_EQ(picture->format, AIK_PIXEL_MONO16);
    EXPECT_EQ(picture->timestamp, 77U);
    EXPECT_FALSE(channel.grab(Timestamp::NotWanted)->timestamp);
}

TEST_F(View, FetchesFromAFullRingAndAsksForTheFormatLater)
{
    Channel channel = m_adapter.open(0);
    channel.setup();
    g_adapter.isRingFull = true;
    const auto picture = channel.grab();
    ASSERT_TRUE(picture);
    EXPECT_FALSE(picture->format);
    EXPECT_EQ(picture->bytesPerPixel, 2U);

    g_adapter.isRingFull = false;
    EXPECT_EQ(channel.grab(Timestamp::NotWanted)->format, AIK_PIXEL_MONO16);
}

TEST_F(View, FetchesIntoMemoryOfTheCaller)
{
    Channel channel = m_adapter.open(0);
    channel.setup();
    std::vector<uint8_t> memory(channel.capacity());
    EXPECT_THROW(channel.grabInto(memory.data(), memory.size() - 1), std::length_error);
    for (const int number : {1, 2}) {   // the first one is measured in memory of the channel
        const auto picture = channel.grabInto(memory.data(), memory.size());
        ASSERT_TRUE(picture);
        EXPECT_EQ(picture->bytes.data(), memory.data());
        EXPECT_EQ(memory[2 * kImagePixels - 1], number);
    }

    channel.write("Transformation", "RGB8PackedToPlanar");   // the bytes are measured anew
    const auto planes = channel.grabInto(memory.data(), memory.size());
    EXPECT_TRUE(planes->isPlanar);
    EXPECT_EQ(planes->bytes.size(), 18U);   // threes only
}

TEST_F(View, ReadsAndWritesValuesOfTheirType)
{
    Channel channel = m_adapter.open(0);
    g_adapter.features = {{"Float", "1e+06"}, {"Integer", "-8"}, {"Boolean", "True"}, {"Cut", "12x"}};
    EXPECT_EQ(channel.read<double>("Float"), 1e6);
    EXPECT_EQ(channel.read<int>("Integer"), -8);
    EXPECT_TRUE(channel.read<bool>("Boolean"));
    EXPECT_EQ(channel.read("Cut"), "12x");
    EXPECT_THROW(channel.read<int>("Cut"), ValueError);
    EXPECT_THROW(channel.read<uint32_t>("Integer"), ValueError);
    EXPECT_THROW(channel.read<bool>("Integer"), ValueError);

    channel.write("Float", 0.1);
    channel.write("Integer", uint64_t{1} << 63);
    channel.write("Boolean", true);
    channel.write("CameraBooleanValue", true);   // whose texts mean the opposite
    EXPECT_EQ(g_adapter.features["Float"], "0.1");
    EXPECT_EQ(g_adapter.features["Integer"], "9223372036854775808");
    EXPECT_EQ(g_adapter.features["Boolean"], "True");
    EXPECT_EQ(g_adapter.features["CameraBooleanValue"], "False");
    channel.write("CameraBooleanValue", "True");   // a text is passed on as it is
    EXPECT_EQ(g_adapter.features["CameraBooleanValue"], "True");
}

TEST_F(View, ReleasesEachChannelOnceAndShutsDownWhatAFailedOpenLeft)
{
    {
        std::vector<Channel> channels = m_adapter.openAll();
        ASSERT_EQ(channels.size(), 2U);
        Channel moved = std::move(channels[0]);
        moved = std::move(channels[1]);   // releases the first
        EXPECT_EQ(g_adapter.released, std::vector<int64_t>{1});
    }
    EXPECT_EQ(g_adapter.released, (std::vector<int64_t>{1, 2}));

    g_adapter.released.clear();
    g_adapter.isBoardMissing = true;
    EXPECT_TRUE(m_adapter.openAll().empty());
    EXPECT_THROW(m_adapter.open(0), Error);
    EXPECT_EQ(g_adapter.released, (std::vector<int64_t>{0, 0}));
}

}   // namespace
}   // namespace aik

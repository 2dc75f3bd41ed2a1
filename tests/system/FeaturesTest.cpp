#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using Features = OneChannel;

TEST_F(Features, TellWhatTheyAre)
{
    struct Row {
        const char* name;
        const char* type;
        const char* writeable;
        const char* description;
    };
    const Row rows[] = {
        {"BufferCount", "2", "True", "Number of buffers on this stream."},
        {"FrameCountSinceLastStart", "2", "False", "Frame counter"},
        {"TimestampFrequency", "2", "False",
         "This is the frequency of the timestamps that are assigned to every image."},
        {"AcquisitionStrategy", "1", "True", "Available buffer handling modes of this Data Stream."},
        {"Transformation", "1", "True", "Pixel transformation on the CPU."},
        {"CogAdapterInterfaceID", "6", "False",
         "This feature returns the ID of the aik.hinterface file used when the adapter was build."},
        {"CogAdapterVersion", "6", "False", "The version of the adapter DLL."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(host.featureType(id, row.name), gives(row.type));
        EXPECT_EQ(host.attribute(id, row.name, AIK_ATTR_DESCRIPTION), gives(row.description));
        EXPECT_EQ(host.attribute(id, row.name, AIK_ATTR_READABLE), gives("True"));
        EXPECT_EQ(host.attribute(id, row.name, AIK_ATTR_WRITEABLE), gives(row.writeable));
        EXPECT_EQ(host.attribute(id, row.name, AIK_ATTR_EMPTY), gives(""));
        EXPECT_EQ(host.attribute(id, row.name, 5), fails("Attribute type is unknown."));
    }
}

TEST_F(Features, AreFoundByExactNameAndCountedFromZero)
{
    Lines names;
    for (uint32_t index = 0; host.featureName(id, index).code == AIK_OK; ++index)
        names.push_back(host.featureName(id, index).text);
    EXPECT_THAT(names, testing::IsSupersetOf({"BufferCount", "AcquisitionStrategy", "Transformation"}));
    EXPECT_EQ(names.back(), "CogAdapterVersion");
    EXPECT_EQ(host.featureName(id, static_cast<uint32_t>(names.size())),
              fails("Cannot find feature with the given index"));

    const auto unknown = fails("Cannot find feature with the name: bufferCount");
    EXPECT_EQ(host.read(id, "bufferCount"), unknown);
    EXPECT_EQ(host.write(id, "bufferCount", "1"), unknown);
    EXPECT_EQ(host.execute(id, "bufferCount"), unknown);
    EXPECT_EQ(host.featureType(id, "bufferCount"), unknown);
    EXPECT_EQ(host.attribute(id, "bufferCount", 0), unknown);   // found before the code is looked at
    EXPECT_EQ(host.validEnum(id, "bufferCount", 0), unknown);
}

TEST_F(Features, RefuseWithTheirOwnTextWrappedOrBare)
{
    EXPECT_EQ(host.write(id, "FrameCountSinceLastStart", "1"),
              fails("Feature could not be written. (Feature is not writeable.)"));
    EXPECT_EQ(host.read(id, "CogAdapterVersion"),
              fails("Feature could not be read. (Feature is not available.)"));
    EXPECT_EQ(host.execute(id, "CogAdapterVersion"),
              fails("Command could not be executed. (Feature is not available.)"));
    EXPECT_EQ(host.execute(id, "BufferCount"), fails("Execute function is not implemented for int feature."));
    EXPECT_EQ(host.execute(id, "Transformation"),
              fails("Execute function is not implemented for enum feature."));
    EXPECT_EQ(host.validEnum(id, "BufferCount", 0), fails("Feature is not a valid enum type."));

    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    EXPECT_EQ(adapter.readValue(errstr.data(), id, "CogAdapterVersion", nullptr), AIK_FAILED);
    EXPECT_STREQ(errstr.data(), "Feature could not be read. (Val is an invalid pointer)");
}

TEST_F(Features, TakeNumbersByTheRulesOfAStream)
{
    EXPECT_EQ(host.write(id, "BufferCount", " 7 buffers"), done());
    EXPECT_EQ(host.read(id, "BufferCount"), gives("7"));
    const auto unparsable =
        fails("Feature could not be written. (Cannot parse char array to a number value)");
    EXPECT_EQ(host.write(id, "BufferCount", "seven"), unparsable);
    EXPECT_EQ(host.write(id, "BufferCount", ""), unparsable);
    EXPECT_EQ(host.write(id, "BufferCount", "99999999999999999999999"), unparsable);
    EXPECT_EQ(host.read(id, "BufferCount"), gives("7"));
}

TEST_F(Features, ListTheirEntriesByValue)
{
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 0), gives("NewestOnly"));
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 1), gives("OldestFirstOverwrite"));
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 2), gives("OldestFirst"));
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 3), fails("Invalid enum index!"));
    EXPECT_EQ(host.validEnum(id, "Transformation", 0), gives("NoTransformation"));
    EXPECT_EQ(host.validEnum(id, "Transformation", 1), gives("RGB8PackedToPlanar"));
    EXPECT_EQ(host.write(id, "AcquisitionStrategy", "newestonly"), fails("Invalid enum key!"));
    EXPECT_EQ(host.read(id, "AcquisitionStrategy"), gives("OldestFirstOverwrite"));

    Canaries value(AIK_ENUM_SIZE);   // no NUL follows the name
    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    ASSERT_EQ(adapter.getValidEnum(errstr.data(), id, "AcquisitionStrategy", 0, value.text()), AIK_OK);
    EXPECT_TRUE(value.isUntouchedFrom(std::string("NewestOnly").size()));
}

TEST_F(SystemTest, APortWithoutAFrequencyHasTwoFeaturesOnly)
{
    OrvoSim_answer("Brd_getSystemInformation code=100", 1, -43);
    OrvoSim_answerWith("Brd_getSystemInformation code=100", 2, 0, "fast", 5);
    machine.oneBoard({{"dmas", 2}});
    const auto unknown = fails("Cannot find feature with the name: TimestampFrequency");
    EXPECT_EQ(host.read(host.opened(0), "TimestampFrequency"), unknown);
    EXPECT_EQ(host.read(host.opened(1), "TimestampFrequency"), unknown);
    EXPECT_EQ(host.read(1, "BufferCount"), gives("5"));
}

}   // namespace

}   // namespace orvo::test

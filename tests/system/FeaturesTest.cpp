#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using Features = OneChannel;

TEST_F(Features, AreFoundByExactNameAndCountedFromZero)
{
    EXPECT_EQ(host.featureName(id, 0), gives("BrdFeatureKey"));
    EXPECT_EQ(host.featureName(id, 36), gives("CogAdapterVersion"));
    EXPECT_EQ(host.featureName(id, 37), fails("Cannot find feature with the given index"));
    EXPECT_EQ(host.attribute(id, "BufferCount", AIK_ATTR_EMPTY), gives(""));
    EXPECT_EQ(host.attribute(id, "BufferCount", 5), fails("Attribute type is unknown."));

    const auto unknown = fails("Cannot find feature with the name: bufferCount");
    EXPECT_EQ(host.read(id, "bufferCount"), unknown);
    EXPECT_EQ(host.write(id, "bufferCount", "1"), unknown);
    EXPECT_EQ(host.execute(id, "bufferCount"), unknown);
    uint32_t type = 0;
    EXPECT_EQ(Host::call(GetFeatureType, id, "bufferCount", &type), unknown);
    EXPECT_EQ(host.attribute(id, "bufferCount", 0), unknown);   // found before the code is looked at
    EXPECT_EQ(host.validEnum(id, "bufferCount", 0), unknown);

    const std::string tooLong = "Cannot find feature with the name: " + std::string(300, 'x');
    EXPECT_EQ(host.read(id, std::string(300, 'x').c_str()), fails(tooLong.substr(0, AIK_ERRSTR_SIZE - 1)));
}

TEST_F(Features, RefuseWithTheirOwnTextWrappedOrBare)
{
    const std::pair<Answer, Answer> refusals[] = {
        {host.write(id, "FrameCountSinceLastStart", "1"), cannotWrite("Feature is not writeable.")},
        {host.read(id, "CogAdapterVersion"), cannotRead(kNotAvailable)},
        {host.execute(id, "CogAdapterVersion"), cannotExecute(kNotAvailable)},
        {host.execute(id, "BufferCount"), fails("Execute function is not implemented for int feature.")},
        {host.execute(id, "Transformation"), fails("Execute function is not implemented for enum feature.")},
        {host.validEnum(id, "BufferCount", 0), fails("Feature is not a valid enum type.")},
        {host.validEnum(id, "AcquisitionStrategy", 3), fails("Invalid enum index!")},
        {host.write(id, "AcquisitionStrategy", "newestonly"), fails("Invalid enum key!")},
        {Host::call(ReadValue, id, "CogAdapterVersion", nullptr), cannotRead("Val is an invalid pointer")},
    };
    for (const auto& [answer, refusal] : refusals)
        EXPECT_EQ(answer, refusal);
    EXPECT_EQ(host.read(id, "AcquisitionStrategy"), gives("OldestFirstOverwrite"));
}

TEST_F(Features, TakeNumbersByTheRulesOfAStream)
{
    EXPECT_EQ(host.write(id, "BufferCount", " 7 buffers"), done());
    for (const char* text : {"seven", "", "99999999999999999999999"})
        EXPECT_EQ(host.write(id, "BufferCount", text),
                  cannotWrite("Cannot parse char array to a number value"));
    EXPECT_EQ(host.read(id, "BufferCount"), gives("7"));
}

TEST_F(Features, ListTheirEntriesByValueWithoutANul)
{
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 0), gives("NewestOnly"));
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 2), gives("OldestFirst"));
    Canaries value(AIK_ENUM_SIZE);
    ASSERT_EQ(Host::call(GetValidEnum, id, "Transformation", 1, value.text()), done());
    const std::string entry = "RGB8PackedToPlanar";
    EXPECT_EQ(std::string(value.text(), entry.size()), entry);
    EXPECT_TRUE(value.isUntouchedFrom(entry.size()));
}

TEST_F(SystemTest, AChannelWithoutAFrequencyLacksThatFeatureAlone)
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

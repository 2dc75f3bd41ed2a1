#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

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
        {host.execute(id, "BrdFeatureKey"), fails("Execute function is not implemented for bool feature.")},
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

const char* const kSetters = "Brd_setParameter*";

json parameter(int type, const char* name, const json& value)
{
    return {{"id", 5000 + type}, {"name", name}, {"type", type}, {"value", value}};
}

/// One board whose applet has a parameter of each type, and two channels, of the DMAs 3 and 4.
class BoardParameters : public SystemTest {
protected:
    BoardParameters()
    {
        json applet = Machine::appletOf({Machine::process({Machine::dma(3), Machine::dma(4)})});
        applet["parameters"] = std::vector<json>{
            parameter(1, "Offset", -7),
            parameter(2, "Delay", 4294967295),
            parameter(3, "Position", -5000000000),
            parameter(4, "Ticks", 18446744073709551615u),
            parameter(5, "Gain", 0.5),
            parameter(6, "Label", "left"),
            parameter(7, "Mask", 7),
        };
        applet["parameters"].at(0)["most"] = 100;
        machine.boards({Machine::grabber(0)});
        machine.applet(0, applet);
        id = host.opened(0);
        neighbour = host.opened(1);
        OrvoSim_clearJournal();
    }

    Answer read(const char* feature) { return host.read(id, feature); }
    Answer write(const char* feature, const char* value) { return host.write(id, feature, value); }
    void select(const char* name) { EXPECT_EQ(write("BrdFeatureKey", name), done()); }

    int64_t id = 0;
    int64_t neighbour = 0;
};

TEST_F(BoardParameters, AreTakenByTheFeatureOfTheirTypeAlone)
{
    struct Row {
        const char* name;
        const char* feature;
        const char* before;
        const char* written;
        const char* call;   // to Brd_setParameterWithType, or for a text to Brd_setParameter
        const char* after;
    };
    const char* const most = "18446744073709551615";
    const Row rows[] = {
        {"Offset", "BrdIntValue", "-7", " -12abc", "id=5001 value=-12 dma=3 type=1", "-12"},
        {"Delay", "BrdIntValue", "4294967295", "-2", "id=5002 value=4294967294 dma=3 type=2", "4294967294"},
        {"Position", "BrdIntValue", "-5000000000", "50000000001", "id=5003 value=50000000001 dma=3 type=3",
         "50000000001"},
        {"Ticks", "BrdIntValue", most, "7", "id=5004 value=7 dma=3 type=4", "7"},
        {"Gain", "BrdFloatValue", "0.5", "0.123456789 dB", "id=5005 value=0.123456789 dma=3 type=5",
         "0.123456789"},
        {"Label", "BrdStringValue", "left", "right, lower", "id=5006 value=\"right, lower\" dma=3",
         "right, lower"},
        {"Mask", "BrdIntValue", "7", most, "id=5007 value=18446744073709551615 dma=3 type=4", most},
    };
    const std::pair<const char*, const char*> refusals[] = {
        {"BrdStringValue", "Parameter is not a string!"},
        {"BrdIntValue", "Parameter is not an integer type!"},
        {"BrdFloatValue", "Parameter is not a float type!"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        select(row.name);
        EXPECT_EQ(read(row.feature), gives(row.before));
        EXPECT_EQ(write(row.feature, row.written), done());
        EXPECT_THAT(takeJournal(kSetters),
                    ElementsAre(HasSubstr(" board=0 " + std::string(row.call) + " -> 0")));
        EXPECT_EQ(read(row.feature), gives(row.after));
        for (const auto& [feature, refusal] : refusals) {
            if (feature == std::string(row.feature))
                continue;
            EXPECT_EQ(read(feature), cannotRead(refusal));
            if (feature != std::string("BrdFloatValue")) {
                EXPECT_EQ(write(feature, "1"), cannotWrite(refusal));
                EXPECT_THAT(takeJournal(kSetters), IsEmpty());
            } else {   // leaves it to the library
                OrvoSim_answer("Brd_setParameterWithType value=2.5 type=5", 1, -9);
                EXPECT_EQ(write(feature, "2.5"), cannotWrite("brd error code: -9"));
                OrvoSim_clearJournal();
            }
        }
    }
}

TEST_F(BoardParameters, AreFoundByNameAnewForTypeAndValue)
{
    select("Offset");
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(read("BrdIntValue"), gives("-7"));
    const std::string find = "Brd_getParameterIdByName board=0 name=\"Offset\" -> 5001";
    EXPECT_EQ(takeJournal(),
              (Lines{find,
                     "Brd_getParameterProperty board=0 id=5001 property=1 buffer=set length=128 -> 0 "
                     "length=2 buffer=\"1\"",
                     find,
                     "Brd_getParameterPropertyEx board=0 id=5001 property=0 dma=3 buffer=set length=256 -> 0 "
                     "length=3 buffer=\"-7\""}));
}

TEST_F(BoardParameters, FailBareByTheirTextAndWrappedByTheLibrary)
{
    for (const char* unknown : {"", "offset"}) {
        select(unknown);
        EXPECT_EQ(read("BrdIntValue"), cannotRead("brd error code: -2070"));
        EXPECT_EQ(write("BrdFloatValue", "1"), cannotWrite("brd error code: -2070"));
    }
    select("Delay");
    for (const char* text : {"abc", "", "4294967296"})
        EXPECT_EQ(write("BrdIntValue", text), fails("Cannot parse char array to number value")) << text;
    EXPECT_EQ(write("BrdFloatValue", "abc"), fails("Cannot parse char array to number value"));
    EXPECT_THAT(takeJournal(kSetters), IsEmpty());
    EXPECT_EQ(host.execute(id, "BrdIntValue"), cannotExecute("This function is not implemented."));

    select("Offset");
    EXPECT_EQ(write("BrdIntValue", "101"), cannotWrite("brd error code: -2072"));
    OrvoSim_answer("Brd_getParameterProperty property=1", 1, -9);
    EXPECT_EQ(read("BrdIntValue"), cannotRead("brd error code: -9"));
    OrvoSim_answer("Brd_getParameterPropertyEx property=0", 1, -10);
    EXPECT_EQ(read("BrdIntValue"), cannotRead("brd error code: -10"));
    EXPECT_EQ(read("BrdIntValue"), gives("-7"));

    select("Label");
    ASSERT_EQ(write("BrdStringValue", std::string(255, 'x').c_str()), done());
    EXPECT_EQ(read("BrdStringValue"), gives(std::string(255, 'x')));
    ASSERT_EQ(write("BrdStringValue", std::string(256, 'x').c_str()), done());
    EXPECT_EQ(read("BrdStringValue"), cannotRead("brd error code: -2005"));   // the host has no room for it
}

TEST_F(BoardParameters, AreThoseOfTheChannelsOwnKeyAndDma)
{
    select("Offset");
    EXPECT_EQ(write("BrdIntValue", "12"), done());
    EXPECT_EQ(host.read(neighbour, "BrdFeatureKey"), gives(""));
    EXPECT_EQ(host.write(neighbour, "BrdFeatureKey", "Offset"), done());
    EXPECT_EQ(host.read(neighbour, "BrdIntValue"), gives("-7"));
    EXPECT_EQ(read("BrdIntValue"), gives("12"));
}

}   // namespace

}   // namespace orvo::test

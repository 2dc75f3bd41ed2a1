// No channel has these features: the adapter only offers their kinds.
#include <array>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "features/BrdEnumFeature.h"
#include "features/BrdFeature.h"
#include "features/BrdStringFeature.h"
#include "features/FeatureContainer.h"
#include "tests/brdlib/LoadedApplet.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"

namespace orvo::test {

namespace {

using testing::ElementsAre;

constexpr int32_t kFormat = 5000;
constexpr int32_t kLabel = 5001;
const char* const kProperty = "Brd_getParameterProperty";
const char* const kValue = "Brd_getParameterProperty property=0";
const char* const kSize = "Brd_getParameterProperty property=13";
const char* const kTable = "Brd_getParameterProperty property=14";

const std::string kEndMark = "\xFF\xFF\xFF\xFF";

std::string withNul(const std::string& text)
{
    return text + '\0';
}

std::string entry(int32_t value, const std::string& name)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value) + withNul(name);
}

/// The next call that meets the pattern hands out these bytes.
void handOut(const char* call, const std::string& bytes)
{
    OrvoSim_answerWith(call, 1, 0, bytes.data(), bytes.size());
}

/// A board whose DMA 3 has a parameter of each kind.
class BrdFeatures : public LoadedApplet {
protected:
    BrdFeatures()
    {
        json applet = Machine::appletOf({Machine::process({Machine::dma(3)})});
        applet["parameters"] = json::parse(R"([
            {"id": 5000, "name": "Format", "type": 1, "entries": [
                {"value": 10, "name": "Mono8"}, {"value": -7, "name": "Mono16"}, {"value": 400, "name": "RGB8"}]},
            {"id": 5001, "name": "Label", "type": 6, "value": "abc", "text": "What it is for"}])");
        load(applet);
        address(choice, kFormat);
        address(text, kLabel);
        choice.refresh();
        OrvoSim_clearJournal();
    }

    Usable<cognex::BrdEnumFeature> choice;
    Usable<cognex::BrdStringFeature> text;

private:
    void address(cognex::BrdFeature& feature, int32_t id) const
    {
        feature.setBoardHandle(board->applet()->handle());
        feature.setParameterId(id);
        feature.setDmaIndex(3);
    }
};

TEST_F(BrdFeatures, ListReadAndWriteAnEnumerationByName)
{
    EXPECT_EQ(choice.validEnum(0), "Mono8");   // by position, though the numbers have gaps
    EXPECT_EQ(choice.validEnum(2), "RGB8");
    for (const int32_t position : {-1, 3, 10})
        EXPECT_EQ(bareFailure([&] { choice.validEnum(position); }), "Invalid enum index!");

    int told = 0;
    const auto observer = cognex::observe(choice, [&] { ++told; });
    EXPECT_EQ(bareFailure([&] { choice.write("mono16"); }), "Invalid enum key!");
    choice.write("Mono16");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(reading(choice), "Mono16");
    EXPECT_THAT(takeJournal("Brd_setParameter"),
                ElementsAre("Brd_setParameter board=0 id=5000 value=-7 dma=3 -> 0"));
    handOut(kValue, withNul("11"));
    EXPECT_EQ(bareFailure([&] { reading(choice); }),
              "The parameter has a value that can not be mapped on a enum entry.");
}

TEST_F(BrdFeatures, FailWithTheDescriptionOfTheLibrary)
{
    OrvoSim_answer("Brd_setParameter", 0, -5);
    OrvoSim_answer("Brd_getLastErrorDescription", 1, 0);
    EXPECT_EQ(bareFailure([&] { choice.write("RGB8"); }), "");   // it has none
    const std::string description = "out of order";
    OrvoSim_answerWith("Brd_getLastErrorDescription", 0, 0, description.c_str(), description.size() + 1);
    OrvoSim_answer(kTable, 1, -5);
    EXPECT_EQ(bareFailure([&] { choice.refresh(); }), description);
    OrvoSim_answer(kProperty, 0, -5);
    EXPECT_EQ(bareFailure([&] { choice.write("RGB8"); }), description);
    EXPECT_EQ(bareFailure([&] { choice.refresh(); }), description);
    EXPECT_EQ(bareFailure([&] { text.write("right"); }), description);
    EXPECT_EQ(bareFailure([&] { reading(choice); }), description);
    EXPECT_EQ(choice.validEnum(2), "RGB8");
}

TEST_F(BrdFeatures, KeepTheirEntriesWhenTheTableIsBroken)
{
    const std::tuple<const char*, std::string, const char*> rows[] = {
        {kTable, kEndMark, "Invalid enum table"},   // the first entry always counts, and has no name
        {kTable, entry(1, "A").substr(0, 5), "Invalid enum table"},           // ends within the name
        {kTable, entry(1, "A") + kEndMark.substr(1), "Invalid enum table"},   // three quarters of an end mark
        {kTable, entry(1, "A") + entry(1, "B").substr(0, 4), "Invalid enum table"},
        {kSize, withNul("0"), "Invalid enum table"},
        {kSize, withNul("-4"), "Invalid enum table"},
        {kSize, withNul("many"), "Cannot parse char array to number value"},
    };
    for (const auto& [call, bytes, failure] : rows) {
        handOut(call, bytes);
        EXPECT_EQ(bareFailure([&] { choice.refresh(); }), failure) << testing::PrintToString(bytes);
    }
    EXPECT_EQ(choice.validEnum(2), "RGB8");
}

TEST_F(BrdFeatures, TakeOverANewTableAsAWhole)
{
    // Shorter than its size says: up to the end mark. The first entry counts, whatever its number is.
    handOut(kTable, entry(-1, "Only") + kEndMark + "rest");
    choice.refresh();
    EXPECT_TRUE(choice.hasPosition(0));
    EXPECT_FALSE(choice.hasPosition(1));
    EXPECT_EQ(bareFailure([&] { choice.write("Mono8"); }), "Invalid enum key!");
    handOut(kValue, withNul("-1"));
    EXPECT_EQ(reading(choice), "Only");
}

TEST_F(BrdFeatures, CopyAndWriteTextsAsTheyAre)
{
    std::array<char, 8> val{"1234567"};
    text.read(val.data());   // as many bytes as the library counts
    EXPECT_EQ(std::string(val.data(), 7), withNul("abc") + "567");
    text.write("lamp on");
    EXPECT_THAT(takeJournal("Brd_setParameter"),
                ElementsAre("Brd_setParameter board=0 id=5001 value=\"lamp on\" dma=3 -> 0"));
    EXPECT_EQ(bareFailure([&] { text.execute(); }),
              "Execute function is not implemented for string feature.");
    OrvoSim_answer(kProperty, 0, -5);
    text.read(val.data());   // fails silently
    EXPECT_STREQ(val.data(), "abc");
}

TEST_F(BrdFeatures, DifferFromEachOtherInTheirProperties)
{
    void* const handle = board->applet()->handle();
    EXPECT_TRUE(cognex::isEnumeration(handle, kFormat));
    EXPECT_FALSE(cognex::isEnumeration(handle, kLabel));
    EXPECT_EQ(cognex::parameterText(handle, kLabel), "What it is for");
    OrvoSim_answer(kProperty, 0, -5);
    EXPECT_FALSE(cognex::isEnumeration(handle, kFormat));
    EXPECT_EQ(aikFailure([&] { cognex::parameterText(handle, kLabel); }), "brd error code: -5");
}

}   // namespace

}   // namespace orvo::test

// No channel has these features: the adapter only offers their kinds.
#include <array>
#include <cstring>

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

using cognex::BrdEnumFeature;
using cognex::BrdStringFeature;
using testing::ElementsAre;

constexpr int32_t kFormat = 5000;
constexpr int32_t kLabel = 5001;
const char* const kProperty = "Brd_getParameterProperty";
const char* const kTable = "Brd_getParameterProperty property=14";

const std::string kEndMark = "\xFF\xFF\xFF\xFF";

std::string entry(int32_t value, const std::string& name)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes + name + '\0';
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
        const auto named = [](int32_t value, const char* name) {
            return json{{"value", value}, {"name", name}};
        };
        applet["parameters"] = {
            {{"id", kFormat},
             {"name", "Format"},
             {"type", 1},
             {"entries", {named(10, "Mono8"), named(-7, "Mono16"), named(400, "RGB8")}}},
            {{"id", kLabel}, {"name", "Label"}, {"type", 6}, {"value", "abc"}, {"text", "What it is for"}},
        };
        load(applet);
        address(choice, kFormat);
        address(text, kLabel);
        choice.refresh();
        OrvoSim_clearJournal();
    }

    void address(cognex::BrdFeature& feature, int32_t id) const
    {
        feature.setBoardHandle(board->applet()->handle());
        feature.setParameterId(id);
        feature.setDmaIndex(3);
    }
    std::string failureOfRefresh()
    {
        return bareFailure([&] { choice.refresh(); });
    }
    static void describeFailures()
    {
        OrvoSim_answerWith("Brd_getLastErrorDescription", 0, 0, "out of order", sizeof "out of order");
    }

    Usable<BrdEnumFeature> choice;
    Usable<BrdStringFeature> text;
};

TEST_F(BrdFeatures, ListTheNamesOfAnEnumerationByPositionThoughTheNumbersHaveGaps)
{
    EXPECT_EQ(choice.validEnum(0), "Mono8");
    EXPECT_EQ(choice.validEnum(1), "Mono16");
    EXPECT_EQ(choice.validEnum(2), "RGB8");
    EXPECT_TRUE(choice.hasPosition(2));
    for (const int32_t position : {-1, 3, 10}) {
        EXPECT_FALSE(choice.hasPosition(position));
        EXPECT_EQ(bareFailure([&] { choice.validEnum(position); }), "Invalid enum index!");
    }
}

TEST_F(BrdFeatures, ReadAndWriteAnEnumerationByName)
{
    int told = 0;
    const auto observer = cognex::observe(choice, [&] { ++told; });
    choice.write("Mono16");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(reading(choice), "Mono16");
    EXPECT_EQ(bareFailure([&] { choice.write("mono16"); }), "Invalid enum key!");
    EXPECT_THAT(takeJournal("Brd_setParameter"),
                ElementsAre("Brd_setParameter board=0 id=5000 value=-7 dma=3 -> 0"));
    handOut("Brd_getParameterProperty property=0", std::string("11") + '\0');
    EXPECT_EQ(bareFailure([&] { reading(choice); }),
              "The parameter has a value that can not be mapped on a enum entry.");

    OrvoSim_answer("Brd_getLastErrorDescription", 1, 0);
    describeFailures();
    OrvoSim_answer("Brd_setParameter", 0, -5);
    OrvoSim_answer(kProperty, 0, -5);
    EXPECT_EQ(bareFailure([&] { choice.write("RGB8"); }), "");   // the library has no words for it
    EXPECT_EQ(bareFailure([&] { choice.write("RGB8"); }), "out of order");
    EXPECT_EQ(bareFailure([&] { reading(choice); }), "out of order");
    EXPECT_EQ(bareFailure([&] { text.write("right"); }), "out of order");
    EXPECT_EQ(told, 1);
}

TEST_F(BrdFeatures, KeepTheirEntriesOverABrokenTable)
{
    const std::string kNoName = entry(1, "A").substr(0, 4);
    const std::string kTables[] = {
        kEndMark,                             // the first one counts, and has no name
        kNoName,                              // ends before the name
        entry(1, "A").substr(0, 5),           // ends within the name
        entry(1, "A"),                        // no end mark
        entry(1, "A") + kEndMark.substr(1),   // half an end mark
        entry(1, "A") + kNoName + kEndMark.substr(1) + "B",
    };
    for (const std::string& table : kTables) {
        handOut(kTable, table);
        EXPECT_EQ(failureOfRefresh(), "Invalid enum table") << testing::PrintToString(table);
    }
    const std::pair<const char*, const char*> kSizes[] = {
        {"0", "Invalid enum table"},
        {"-4", "Invalid enum table"},
        {"many", "Cannot parse char array to number value"},
    };
    for (const auto& [size, failure] : kSizes) {
        handOut("Brd_getParameterProperty property=13", std::string(size) + '\0');
        EXPECT_EQ(failureOfRefresh(), failure) << size;
    }
    describeFailures();
    OrvoSim_answer(kTable, 1, -5);
    EXPECT_EQ(failureOfRefresh(), "out of order");
    OrvoSim_answer(kProperty, 1, -5);
    EXPECT_EQ(failureOfRefresh(), "out of order");
    EXPECT_EQ(choice.validEnum(2), "RGB8");
}

TEST_F(BrdFeatures, TakeANewTableWhole)
{
    // Less than its size tells, up to the end mark, and the first entry counts whatever its number is.
    handOut(kTable, entry(-1, "Only") + kEndMark + "rest");
    choice.refresh();
    EXPECT_EQ(choice.validEnum(0), "Only");
    EXPECT_FALSE(choice.hasPosition(1));
    EXPECT_EQ(bareFailure([&] { choice.write("Mono8"); }), "Invalid enum key!");
    handOut("Brd_getParameterProperty property=0", std::string("-1") + '\0');
    EXPECT_EQ(reading(choice), "Only");
}

TEST_F(BrdFeatures, CopyAndWriteTextsAsTheyAre)
{
    std::array<char, 8> val{"1234567"};
    text.read(val.data());   // as many bytes as the library counts, and none behind them
    EXPECT_EQ(std::string(val.data(), 7), std::string("abc\0"
                                                      "567",
                                                      7));
    text.write("lamp on");
    EXPECT_THAT(takeJournal("Brd_setParameter"),
                ElementsAre("Brd_setParameter board=0 id=5001 value=\"lamp on\" dma=3 -> 0"));
    EXPECT_EQ(bareFailure([&] { text.execute(); }),
              "Execute function is not implemented for string feature.");
    OrvoSim_answer(kProperty, 0, -5);
    text.read(val.data());
    EXPECT_STREQ(val.data(), "abc");
}

TEST_F(BrdFeatures, TellEnumerationsAndTextsApart)
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

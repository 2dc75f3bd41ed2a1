#include <array>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "features/BrdEnumFeature.h"
#include "features/BrdProperty.h"
#include "features/BrdStringFeature.h"
#include "features/FeatureObserver.h"
#include "features/addFeature.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"
#include "tests/support/LibraryUse.h"
#include "tests/support/ParameterFake.h"

namespace orvo::cognex {

namespace {

using test::aikFailure;
using test::bareFailure;
using test::delivered;
using test::reading;
using testing::ElementsAre;

const std::string kEndMark = "\xFF\xFF\xFF\xFF";

std::string entry(int32_t value, const std::string& name)
{
    std::string bytes(sizeof value, '\0');
    std::memcpy(bytes.data(), &value, sizeof value);
    return bytes + delivered(name);
}

template <typename Feature>
class Addressed : public test::Usable<Feature> {
public:
    Addressed()
    {
        this->setParameterId(test::ParameterFake::kId);
        this->setDmaIndex(3);
    }
};

class BrdEnumOfThree : public testing::Test {
protected:
    BrdEnumOfThree()
    {
        offer(entry(10, "Mono8") + entry(-7, "Mono16") + entry(400, "RGB8") + kEndMark);
        feature.refresh();
        board.journal.clear();
    }
    void offer(const std::string& table)
    {
        board.properties[13] = delivered(std::to_string(table.size()));
        board.properties[14] = table;
    }

    test::LibraryUse use;
    test::ParameterFake board;
    Addressed<BrdEnumFeature> feature;
};

TEST_F(BrdEnumOfThree, ListsItsNamesByPositionThoughTheNumbersHaveGaps)
{
    EXPECT_EQ(feature.validEnum(0), "Mono8");
    EXPECT_EQ(feature.validEnum(1), "Mono16");
    EXPECT_EQ(feature.validEnum(2), "RGB8");
    EXPECT_TRUE(feature.hasPosition(2));
    for (const int32_t position : {-1, 3, 10}) {
        EXPECT_FALSE(feature.hasPosition(position));
        EXPECT_EQ(bareFailure([&] { feature.validEnum(position); }), "Invalid enum index!");
    }
}

TEST_F(BrdEnumOfThree, ReadsTheNameOfTheLibrarysNumber)
{
    board.properties[0] = delivered("-7");
    EXPECT_EQ(reading(feature), "Mono16");
    board.properties[0] = delivered("11");
    EXPECT_EQ(bareFailure([&] { reading(feature); }),
              "The parameter has a value that can not be mapped on a enum entry.");
    board.refused[0] = -5;
    EXPECT_EQ(bareFailure([&] { reading(feature); }), "out of order");
    board.description = nullptr;
    EXPECT_EQ(bareFailure([&] { reading(feature); }), "");
}

TEST_F(BrdEnumOfThree, WritesTheNumberOfANameAndTellsItsObserversOnce)
{
    int told = 0;
    const auto observer = observe(feature, [&] { ++told; });
    feature.write("RGB8");
    EXPECT_EQ(told, 1);
    EXPECT_EQ(bareFailure([&] { feature.write("rgb8"); }), "Invalid enum key!");
    EXPECT_THAT(board.journal, ElementsAre("set 7 of dma 3: 400"));
    board.writeAnswer = -5;
    EXPECT_EQ(bareFailure([&] { feature.write("RGB8"); }), "out of order");
    EXPECT_EQ(told, 1);
}

TEST_F(BrdEnumOfThree, KeepsItsEntriesOverABrokenTable)
{
    const std::string kNoName = entry(1, "A").substr(0, 4);
    const std::string kTables[] = {
        "",                                   // no entry
        kEndMark,                             // the first one counts, and has no name
        kNoName,                              // ends before the name
        entry(1, "A").substr(0, 5),           // ends within the name
        entry(1, "A"),                        // no end mark
        entry(1, "A") + kEndMark.substr(1),   // half an end mark
        entry(1, "A") + kNoName + kEndMark.substr(1) + "B",
    };
    for (const std::string& table : kTables) {
        offer(table);
        EXPECT_EQ(bareFailure([&] { feature.refresh(); }), "Invalid enum table")
            << testing::PrintToString(table);
    }
    board.properties[13] = delivered("-4");
    EXPECT_EQ(bareFailure([&] { feature.refresh(); }), "Invalid enum table");
    board.properties[13] = delivered("many");
    EXPECT_EQ(bareFailure([&] { feature.refresh(); }), "Cannot parse char array to number value");
    board.refused[13] = -5;
    EXPECT_EQ(bareFailure([&] { feature.refresh(); }), "out of order");
    EXPECT_EQ(feature.validEnum(2), "RGB8");
}

TEST_F(BrdEnumOfThree, TakesANewTableWhole)
{
    // The size may be more than what comes, and the first entry counts whatever its number is.
    offer(entry(-1, "Only") + kEndMark);
    board.properties[13] = delivered("64");
    feature.refresh();
    EXPECT_EQ(feature.validEnum(0), "Only");
    EXPECT_FALSE(feature.hasPosition(1));
    EXPECT_EQ(bareFailure([&] { feature.write("Mono8"); }), "Invalid enum key!");
    board.properties[0] = delivered("-1");
    EXPECT_EQ(reading(feature), "Only");
}

class BrdString : public testing::Test {
protected:
    BrdString() { board.holdsText = true; }

    test::LibraryUse use;
    test::ParameterFake board;
    Addressed<BrdStringFeature> feature;
};

TEST_F(BrdString, CopiesWhatTheLibraryCountsAndNothingBehindIt)
{
    std::array<char, 8> val{"1234567"};
    board.properties[0] = delivered("abc");
    feature.read(val.data());
    EXPECT_EQ(std::string(val.data(), 7), std::string("abc\0"
                                                      "567",
                                                      7));
}

TEST_F(BrdString, SaysNothingOfARefusedReadAndLeavesTheTextAlone)
{
    std::array<char, 8> val{"1234567"};
    board.refused[0] = -5;
    feature.read(val.data());
    EXPECT_STREQ(val.data(), "1234567");
}

TEST_F(BrdString, WritesTheTextItself)
{
    feature.write("lamp on");
    EXPECT_THAT(board.journal, ElementsAre("set 7 of dma 3: lamp on"));
    board.writeAnswer = -5;
    EXPECT_EQ(bareFailure([&] { feature.write("lamp on"); }), "out of order");
    EXPECT_EQ(bareFailure([&] { feature.execute(); }),
              "Execute function is not implemented for string feature.");
}

TEST(BrdProperty, TellsEnumerationsAndTextsApart)
{
    test::ParameterFake board;
    const auto isOne = [] { return isEnumeration(nullptr, test::ParameterFake::kId); };
    board.properties[13] = delivered("12");
    EXPECT_TRUE(isOne());
    board.properties[13] = delivered("0");
    EXPECT_FALSE(isOne());
    board.refused[13] = -5;
    EXPECT_FALSE(isOne());

    const auto text = [] { return parameterText(nullptr, test::ParameterFake::kId); };
    board.properties[3] = delivered("Width of the image");
    EXPECT_EQ(text(), "Width of the image");
    board.refused[3] = -5;
    EXPECT_EQ(aikFailure(text), "brd error code: -5");
}

}   // namespace

}   // namespace orvo::cognex

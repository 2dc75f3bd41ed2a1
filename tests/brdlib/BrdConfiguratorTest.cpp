#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "brdlib/BrdConfigurator.h"
#include "brdlib/DmaPort.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"
#include "tests/support/ParameterFake.h"

namespace orvo::cognex {

namespace {

using test::aikFailure;
using test::bareFailure;
using test::delivered;
using test::reading;
using testing::ElementsAre;

class BrdConfiguratorOfDma3 : public testing::Test {
protected:
    BrdConfiguratorOfDma3()
    {
        port->setDmaIndex(3);
        configurator.setDmaPort(port);
        features = configurator.features().lock();
        features->write("BrdFeatureKey", "FG_WIDTH");
    }

    void typeIs(int32_t type)
    {
        board.properties[1] = delivered(std::to_string(type));
        board.holdsText = type == 6;
    }
    std::string failureOfRead(const std::string& feature)
    {
        return aikFailure([&] { reading(*features, feature); });
    }
    std::string failureOfWrite(const std::string& feature, const char* text = "12")
    {
        return aikFailure([&] { features->write(feature, text); });
    }
    /// The last call of a write of this text, which nothing refuses.
    std::string written(const std::string& feature, const char* text)
    {
        features->write(feature, text);
        return board.journal.back();
    }

    test::ParameterFake board;
    std::shared_ptr<DmaPort> port = std::make_shared<DmaPort>();
    BrdConfigurator configurator;
    std::shared_ptr<FeatureContainer> features;
};

TEST_F(BrdConfiguratorOfDma3, AsksForNameAndTypeAtEachAccess)
{
    typeIs(1);
    board.properties[0] = delivered("640");
    EXPECT_EQ(reading(*features, "BrdIntValue"), "640");
    EXPECT_THAT(board.journal,
                ElementsAre("id of 'FG_WIDTH'", "property 1", "id of 'FG_WIDTH'", "property 0 of dma 3"));
    features->write("BrdFeatureKey", "");
    board.idAnswer = -2042;
    EXPECT_EQ(failureOfRead("BrdIntValue"), "Feature could not be read. (brd error code: -2042)");
    EXPECT_EQ(board.journal.back(), "id of ''");
}

TEST_F(BrdConfiguratorOfDma3, WritesAnIntegerAsItsTypeWantsIt)
{
    const struct {
        int32_t type;
        const char* text;
        const char* call;
    } kWrites[] = {
        {1, " -12abc", "set 7 of dma 3, type 1: -12"},
        {2, "4294967295", "set 7 of dma 3, type 2: 4294967295"},
        {3, "-5000000000", "set 7 of dma 3, type 3: -5000000000"},
        {4, "18446744073709551615", "set 7 of dma 3, type 4: 18446744073709551615"},
        {7, "18446744073709551615", "set 7 of dma 3, type 4: 18446744073709551615"},
    };
    for (const auto& [type, text, call] : kWrites) {
        typeIs(type);
        EXPECT_EQ(written("BrdIntValue", text), call);
        EXPECT_EQ(failureOfRead("BrdStringValue"), "Feature could not be read. (Parameter is not a string!)");
        EXPECT_EQ(failureOfRead("BrdFloatValue"),
                  "Feature could not be read. (Parameter is not a float type!)");
        EXPECT_EQ(bareFailure([&] { features->write("BrdIntValue", "abc"); }),
                  "Cannot parse char array to number value");
    }
}

TEST_F(BrdConfiguratorOfDma3, RefusesIntegersForTextsAndFloats)
{
    for (const int32_t type : {0, 5, 6, 8}) {
        typeIs(type);
        EXPECT_EQ(failureOfRead("BrdIntValue"),
                  "Feature could not be read. (Parameter is not an integer type!)");
        EXPECT_EQ(failureOfWrite("BrdIntValue"),
                  "Feature could not be written. (Parameter is not an integer type!)");
    }
}

TEST_F(BrdConfiguratorOfDma3, WritesTextsToTextsAndFloatsToAnything)
{
    typeIs(6);
    EXPECT_EQ(written("BrdStringValue", "lamp on"), "set 7 of dma 3: lamp on");
    EXPECT_EQ(written("BrdFloatValue", "2.5"), "set 7 of dma 3, type 5: 2.500000");
    typeIs(1);
    EXPECT_EQ(written("BrdFloatValue", "2.5"), "set 7 of dma 3, type 5: 2.500000");
    EXPECT_EQ(failureOfWrite("BrdStringValue"), "Feature could not be written. (Parameter is not a string!)");
    board.refused[1] = -9;   // a parameter without a type
    EXPECT_EQ(failureOfWrite("BrdFloatValue"), "Feature could not be written. (brd error code: -9)");
}

TEST_F(BrdConfiguratorOfDma3, PassesOnWhatTheLibraryRefuses)
{
    typeIs(6);
    board.refused[0] = -2130;
    EXPECT_EQ(failureOfRead("BrdStringValue"), "Feature could not be read. (brd error code: -2130)");
    board.writeAnswer = -11;
    EXPECT_EQ(failureOfWrite("BrdStringValue"), "Feature could not be written. (brd error code: -11)");
    port.reset();
    EXPECT_EQ(failureOfRead("BrdStringValue"), "Feature could not be read. (No dma port is connected)");
}

}   // namespace

}   // namespace orvo::cognex

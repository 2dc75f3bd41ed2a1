#include "features/FeatureContainer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "features/CommandFeature.h"
#include "features/ProxyFeature.h"
#include "features/StringFeature.h"
#include "features/addFeature.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"

using namespace orvo::cognex;
using orvo::test::aikFailure;
using orvo::test::bareFailure;
using orvo::test::reading;
using testing::ElementsAre;

namespace {

class Container : public testing::Test {
protected:
    static std::shared_ptr<StringFeature> addText(FeatureContainer& features, const char* name,
                                                  const char* value)
    {
        auto feature = addFeature<StringFeature>(features, name, "", kReadWrite);
        feature->setValue(value);
        return feature;
    }

    /// Each feature by number: "name: value".
    std::vector<std::string> list() const
    {
        std::vector<std::string> features;
        for (uint32_t i = 0; i < container.count(); ++i)
            features.push_back(container.nameAt(i) + ": " + reading(*container.featureAt(i)));
        return features;
    }

    FeatureContainer container;
};

// No channel has proxies or commands yet, so these texts reach no host.
TEST_F(Container, SaysWhatTheHostWasDoingForAFailureOfOurOwnKindOnly)
{
    addFeature<ProxyFeature>(container, "Proxy", "", kReadWrite);
    const std::string why = "(This function is not implemented.)";
    EXPECT_EQ(aikFailure([&] { reading(container, "Proxy"); }), "Feature could not be read. " + why);
    EXPECT_EQ(aikFailure([&] { container.write("Proxy", ""); }), "Feature could not be written. " + why);
    EXPECT_EQ(aikFailure([&] { container.execute("Proxy"); }), "Command could not be executed. " + why);
    EXPECT_EQ(aikFailure([&] { container.validEnum("Proxy", 0); }), "Feature is not a valid enum type.");

    addFeature<CommandFeature>(container, "Command", "", kReadWrite);
    EXPECT_EQ(bareFailure([&] { reading(container, "Command"); }),
              "Read function is not implemented for command feature.");
    EXPECT_EQ(bareFailure([&] { container.write("Command", ""); }),
              "Write function is not implemented for command feature.");
    EXPECT_EQ(bareFailure([&] { container.execute("Command"); }), "No function is defined for the command.");
}

TEST_F(Container, GivesTheNumberOfASecondFeatureOfANameToTheNextNewName)
{
    addText(container, "A", "older");
    addText(container, "B", "");
    addText(container, "A", "newer");
    EXPECT_THAT(list(), ElementsAre("A: older", "B: ", "A: newer"));
    addText(container, "C", "");
    EXPECT_THAT(list(), ElementsAre("A: older", "B: ", "C: "));
    EXPECT_EQ(reading(container, "A"), "newer");
}

TEST_F(Container, KeepsAFeatureUnderTheNameThatItHadWhenItCame)
{
    addText(container, "A", "value")->setName("B");
    EXPECT_EQ(reading(container, "A"), "value");
    EXPECT_EQ(container.nameAt(0), "B");
}

TEST_F(Container, MergesWhatTheOtherHasNowAndKeepsItAlive)
{
    addText(container, "A", "the earlier source's");
    {
        const auto source = std::make_shared<FeatureContainer>();
        addText(*source, "A", "the later source's");
        container.merge(source);
        addText(*source, "B", "too late");
    }
    container.merge(std::weak_ptr<FeatureContainer>());
    EXPECT_THAT(list(), ElementsAre("A: the earlier source's", "A: the later source's"));
    EXPECT_EQ(reading(container, "A"), "the later source's");
}

}   // namespace

#include "features/FeatureContainer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "features/BasicFeatures.h"
#include "features/FeatureContainer.h"
#include "tests/features/FeatureAccess.h"

using namespace orvo::cognex;
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

TEST_F(Container, GivesTheNumberOfASecondFeatureOfANameToTheNextNewName)
{
    addText(container, "A", "older");
    addText(container, "B", "");
    addText(container, "A", "newer");
    EXPECT_THAT(list(), ElementsAre("A: older", "B: ", "A: newer"));
    addText(container, "C", "");
    EXPECT_THAT(list(), ElementsAre("A: older", "B: ", "C: "));
    EXPECT_EQ(reading(container, "A"), "newer");
    container.featureAt(1)->setName("D");   // found by the name that it had when it came
    EXPECT_EQ(container.nameAt(1), "D");
    EXPECT_EQ(reading(container, "B"), "");
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

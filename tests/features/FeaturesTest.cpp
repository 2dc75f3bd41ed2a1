// What no host sees: it has no feature of some kinds, and no values that a channel's features cannot take.
#include <functional>
#include <limits>
#include <locale>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "features/AdapterFeature.h"
#include "features/BasicFeatures.h"
#include "features/EnumerationFeature.h"
#include "features/FeatureContainer.h"
#include "features/NumberText.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"
#include "tests/support/LibraryUse.h"

namespace orvo::test {

namespace {

using namespace cognex;
using testing::ElementsAre;

std::string failureOfWrite(AdapterFeature& feature, const char* text = "1")
{
    return aikFailure([&] { feature.write(text); });
}

TEST(Features, CheckThePointerThenThePermissionThenWhetherTheyAreAvailable)
{
    StringFeature feature;
    EXPECT_EQ(aikFailure([&] { feature.read(nullptr); }), "Val is an invalid pointer");
    EXPECT_EQ(failureOfWrite(feature, nullptr), "Val is an invalid pointer");
    EXPECT_EQ(aikFailure([&] { reading(feature); }), "Feature is not readable.");
    EXPECT_EQ(failureOfWrite(feature), "Feature is not writeable.");
    feature.setWriteable(true);
    EXPECT_EQ(failureOfWrite(feature), "Feature is not available.");
    EXPECT_EQ(feature.value(), "");
}

TEST(Features, RefuseWhatTheirKindCannotDo)
{
    Usable<BooleanFeature> boolean;
    Usable<StringFeature> string;
    Usable<CommandFeature> command;
    Usable<ProxyFeature> proxy;
    const std::string noExecute = "Execute function is not implemented for bool feature.";
    EXPECT_EQ(bareFailure([&] { boolean.execute(); }), noExecute);
    EXPECT_EQ(bareFailure([&] { string.execute(); }), noExecute);
    EXPECT_EQ(bareFailure([&] { command.execute(); }), "No function is defined for the command.");
    EXPECT_EQ(bareFailure([&] { reading(command); }),
              "Read function is not implemented for command feature.");
    EXPECT_EQ(bareFailure([&] { command.write("1"); }),
              "Write function is not implemented for command feature.");
    EXPECT_EQ(aikFailure([&] { reading(proxy); }), "This function is not implemented.");
    EXPECT_EQ(static_cast<int>(proxy.type()), -1);
}

TEST(Features, KeepTheirTexts)
{
    Usable<BooleanFeature> boolean;
    for (const char* const text : {"true", "1", "True ", "", "True"}) {
        boolean.setValue(text[0] != 'T');
        boolean.write(text);
        EXPECT_EQ(reading(boolean), text == std::string("True") ? "True" : "False") << text;
    }
    Usable<StringFeature> string;   // whole, though a host has room for 255 characters only
    string.write(std::string(300, 'x').c_str());
    EXPECT_EQ(reading(string), std::string(255, 'x'));
    EXPECT_EQ(string.value(), std::string(300, 'x'));
}

struct Grouping : std::numpunct<char> {
    std::string do_grouping() const override { return "\3"; }
};

TEST(Numbers, DisregardTheLocaleOfTheHost)
{
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    Usable<NumberFeature<int>> feature;
    feature.setValue(1234567);
    EXPECT_EQ(reading(feature), "1234567");
    feature.write("1,234");
    EXPECT_EQ(feature.value(), 1);
    EXPECT_EQ(toText(std::numeric_limits<uint64_t>::max()), "18446744073709551615");
    EXPECT_EQ(toText(std::numeric_limits<int64_t>::min()), "-9223372036854775808");
    std::locale::global(before);
}

TEST(Observers, AreCalledInTheirOrderAfterAWriteUntilOneFails)
{
    Usable<NumberFeature<int>> feature;
    std::vector<std::string> told;
    FeatureObserverCallback first;
    FeatureObserverCallback third;
    third.setCallback([&](AdapterFeature*) { told.emplace_back("third, added meanwhile"); });
    first.setCallback([&](AdapterFeature* changed) {
        EXPECT_EQ(changed, &feature);
        told.emplace_back("first");
        feature.addObserver(&third);
    });
    feature.addObserver(&first);
    const auto second = observe(feature, [&] { told.emplace_back("second"); });
    for (const char* const text : {"-", "2147483648"})
        EXPECT_EQ(failureOfWrite(feature, text), "Cannot parse char array to a number value") << text;
    feature.write("3");
    EXPECT_THAT(told, ElementsAre("first", "second", "third, added meanwhile"));

    told.clear();
    first.setCallback([](AdapterFeature*) { throw AIKException("refused"); });
    EXPECT_EQ(failureOfWrite(feature, "4"), "refused");
    EXPECT_EQ(feature.value(), 4);
    first.setCallback(nullptr);
    EXPECT_THROW(feature.write("5"), std::bad_function_call);
    EXPECT_THAT(told, testing::IsEmpty());
}

TEST(Enumerations, MayHaveSeveralNamesForANumberAndNumbersWithoutAName)
{
    const LibraryUse use;   // as their accesses are traced
    Usable<EnumerationFeature> feature;
    const std::string unmapped = "The parameter has a value that can not be mapped on a enum entry.";
    EXPECT_EQ(bareFailure([&] { reading(feature); }), unmapped);
    feature.addEntry("A", 2);
    feature.addEntry("B");   // 1: the number of entries so far
    feature.addEntry("A", 1);
    EXPECT_EQ(feature.validEnum(1), "A");
    EXPECT_EQ(feature.validEnum(2), "A");
    EXPECT_EQ(bareFailure([&] { feature.validEnum(0); }), "Invalid enum index!");
    feature.write("B");
    EXPECT_EQ(reading(feature), "A");
    feature.setValue(7);
    EXPECT_EQ(bareFailure([&] { reading(feature); }), unmapped);

    std::vector<int32_t> told;
    const auto observer = observe(feature, [&] { told.push_back(feature.value()); });
    EXPECT_EQ(bareFailure([&] { feature.write("C"); }), "Invalid enum key!");
    feature.write("A");
    EXPECT_THAT(told, ElementsAre(1, 1));   // twice, which is deliberate
}

void addText(FeatureContainer& container, const char* name, const char* value)
{
    addFeature<StringFeature>(container, name, "", kReadWrite)->setValue(value);
}

std::string listed(const FeatureContainer& container)
{
    std::string features;
    for (uint32_t i = 0; i < container.count(); ++i)
        features += container.nameAt(i) + "=" + reading(*container.featureAt(i)) + " ";
    return features;
}

TEST(Containers, GiveTheNumberOfARepeatedNameToTheNextNewName)
{
    FeatureContainer container;
    addText(container, "A", "older");
    addText(container, "B", "b");
    {
        const auto other = std::make_shared<FeatureContainer>();
        addText(*other, "A", "newer");
        container.merge(other);
        addText(*other, "X", "too late");
    }
    container.merge({});
    EXPECT_EQ(listed(container), "A=older B=b A=newer ");
    addText(container, "C", "c");
    container.featureAt(2)->setName("D");   // and is found by the name that it had when it came
    EXPECT_EQ(listed(container), "A=older B=b D=c ");
    EXPECT_EQ(reading(container, "A"), "newer");
    EXPECT_EQ(reading(container, "C"), "c");
}

}   // namespace

}   // namespace orvo::test

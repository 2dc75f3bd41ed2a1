#include <functional>
#include <limits>
#include <locale>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "features/AdapterFeature.h"
#include "features/BasicFeatures.h"
#include "features/EnumerationFeature.h"
#include "features/NumberText.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"
#include "tests/support/LibraryUse.h"

using namespace orvo;
using namespace orvo::cognex;
using test::aikFailure;
using test::bareFailure;
using test::reading;
using test::Usable;
using testing::ElementsAre;

namespace {

std::string failureOfRead(AdapterFeature& feature)
{
    return aikFailure([&] { reading(feature); });
}

std::string failureOfWrite(AdapterFeature& feature, const char* text = "1")
{
    return aikFailure([&] { feature.write(text); });
}

TEST(Feature, ChecksPointerPermissionAndAvailabilityInThisOrder)
{
    StringFeature feature;
    EXPECT_EQ(aikFailure([&] { feature.read(nullptr); }), "Val is an invalid pointer");
    EXPECT_EQ(failureOfWrite(feature, nullptr), "Val is an invalid pointer");
    EXPECT_EQ(failureOfRead(feature), "Feature is not readable.");
    EXPECT_EQ(failureOfWrite(feature), "Feature is not writeable.");
    feature.setReadable(true);
    feature.setWriteable(true);
    EXPECT_EQ(failureOfRead(feature), "Feature is not available.");
    EXPECT_EQ(failureOfWrite(feature), "Feature is not available.");
    EXPECT_EQ(feature.value(), "");
    feature.setAvailable(true);
    feature.write("1");
    EXPECT_EQ(reading(feature), "1");
}

// Most of these refusals reach no host.
TEST(Feature, RefusesWhatItsKindCannotDo)
{
    Usable<BooleanFeature> boolean;
    Usable<StringFeature> string;
    Usable<NumberFeature<int>> number;
    const std::pair<AdapterFeature*, const char*> kKinds[] = {
        {&boolean, "bool"}, {&string, "bool"}, {&number, "int"}};
    for (const auto& [feature, kind] : kKinds) {
        EXPECT_EQ(bareFailure([&] { feature->execute(); }),
                  "Execute function is not implemented for " + std::string(kind) + " feature.");
        EXPECT_EQ(aikFailure([&] { feature->validEnum(0); }), "Feature is not a valid enum type.");
    }

    CommandFeature command;
    EXPECT_EQ(aikFailure([&] { command.execute(); }), "Feature is not available.");
    command.setAvailable(true);   // which is all that it takes
    EXPECT_EQ(bareFailure([&] { command.execute(); }), "No function is defined for the command.");
    command.setReadable(true);
    command.setWriteable(true);
    EXPECT_EQ(bareFailure([&] { reading(command); }),
              "Read function is not implemented for command feature.");
    EXPECT_EQ(bareFailure([&] { command.write("1"); }),
              "Write function is not implemented for command feature.");

    Usable<ProxyFeature> proxy;
    EXPECT_EQ(static_cast<int>(proxy.type()), -1);
    EXPECT_EQ(failureOfRead(proxy), "This function is not implemented.");
    EXPECT_EQ(failureOfWrite(proxy), "This function is not implemented.");
    EXPECT_EQ(aikFailure([&] { proxy.execute(); }), "This function is not implemented.");
}

TEST(BooleanFeature, IsTrueByOneSpellingOnly)
{
    Usable<BooleanFeature> feature;
    feature.write("True");
    EXPECT_EQ(reading(feature), "True");
    for (const char* const text : {"true", "1", "True ", ""}) {
        feature.setValue(true);
        feature.write(text);
        EXPECT_EQ(reading(feature), "False") << text;
    }
}

TEST(StringFeature, IsReadUpTo255Characters)
{
    Usable<StringFeature> feature;
    feature.write(std::string(300, 'x').c_str());
    EXPECT_EQ(reading(feature), std::string(255, 'x'));
    EXPECT_EQ(feature.value(), std::string(300, 'x'));
}

struct Grouping : std::numpunct<char> {
    std::string do_grouping() const override { return "\3"; }
};

TEST(Numbers, KnowNothingOfTheHostsLocale)
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

/// A number, and observers that write their names into one list.
class Observed : public testing::Test {
protected:
    void observe(
        FeatureObserverCallback& observer, const std::string& name,
        const std::function<void()>& react = [] {})
    {
        observer.setCallback([this, name, react](AdapterFeature* changed) {
            EXPECT_EQ(changed, &feature);
            told.push_back(name);
            react();
        });
        feature.addObserver(&observer);
    }

    Usable<NumberFeature<int>> feature;
    std::vector<std::string> told;
    FeatureObserverCallback first, second, third;
};

TEST_F(Observed, AWriteIsToldOnceAndInTheOrderOfAdding)
{
    observe(first, "first", [&] { observe(third, "third, added meanwhile"); });
    observe(second, "second");
    feature.write("3");
    EXPECT_THAT(told, ElementsAre("first", "second", "third, added meanwhile"));
}

TEST_F(Observed, AFailingObserverLeavesTheNewValueAndARefusedWriteTellsNobody)
{
    for (const char* const text : {"letters", "", "-", "2147483648"})
        EXPECT_EQ(failureOfWrite(feature, text), "Cannot parse char array to a number value") << text;
    observe(first, "first", [] { throw AIKException("refused"); });
    observe(second, "second");
    EXPECT_EQ(failureOfWrite(feature, "3"), "refused");
    EXPECT_EQ(feature.value(), 3);
    EXPECT_THAT(told, ElementsAre("first"));
    first.setCallback(nullptr);
    EXPECT_THROW(feature.write("4"), std::bad_function_call);
}

class Enumeration : public testing::Test {
protected:
    test::LibraryUse m_use;   // its accesses are traced
    Usable<EnumerationFeature> feature;
};

// The lists of the channels have no gaps, and no host can set a value without an entry.
TEST_F(Enumeration, FailsWhereANumberHasNoName)
{
    const std::string unmapped = "The parameter has a value that can not be mapped on a enum entry.";
    EXPECT_EQ(bareFailure([&] { reading(feature); }), unmapped);
    feature.addEntry("A", 5);
    feature.addEntry("B");
    EXPECT_EQ(feature.validEnum(1), "B");   // numbered by the entries so far
    EXPECT_EQ(bareFailure([&] { feature.validEnum(0); }), "Invalid enum index!");
    feature.setValue(7);
    EXPECT_EQ(bareFailure([&] { reading(feature); }), unmapped);
    EXPECT_EQ(bareFailure([&] { feature.validEnum(7); }), "Invalid enum index!");
}

TEST_F(Enumeration, AnEntryReplacesAnotherInItsOwnDirectionOnly)
{
    feature.addEntry("A", 1);
    feature.addEntry("B", 1);
    feature.addEntry("A", 2);
    EXPECT_EQ(feature.validEnum(1), "B");
    EXPECT_EQ(feature.validEnum(2), "A");
    feature.write("B");
    EXPECT_EQ(feature.value(), 1);
    feature.write("A");
    EXPECT_EQ(feature.value(), 2);
}

TEST_F(Enumeration, TellsOfAWriteTwice)
{
    feature.addEntry("A", 5);
    std::vector<int32_t> told;
    FeatureObserverCallback observer;
    observer.setCallback([&](AdapterFeature*) { told.push_back(feature.value()); });
    feature.addObserver(&observer);
    EXPECT_EQ(bareFailure([&] { feature.write("B"); }), "Invalid enum key!");
    feature.write("A");
    EXPECT_THAT(told, ElementsAre(5, 5));
}

}   // namespace

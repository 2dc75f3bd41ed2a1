// What no host sees: it has no feature of some kinds, and no values that a channel's features cannot take.
#include <cmath>
#include <functional>
#include <limits>
#include <locale>
#include <sstream>

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
    Usable<CommandFeature> command;
    Usable<ProxyFeature> proxy;
    EXPECT_EQ(bareFailure([&] { boolean.execute(); }),
              "Execute function is not implemented for bool feature.");
    EXPECT_EQ(bareFailure([&] { command.execute(); }), "No function is defined for the command.");
    EXPECT_EQ(bareFailure([&] { reading(command); }),
              "Read function is not implemented for command feature.");
    EXPECT_EQ(bareFailure([&] { command.write("1"); }),
              "Write function is not implemented for command feature.");
    EXPECT_EQ(aikFailure([&] { reading(proxy); }), "This function is not implemented.");
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
    std::string told;
    FeatureObserverCallback first;
    FeatureObserverCallback third;
    third.setCallback([&](AdapterFeature*) { told += "third, added meanwhile"; });
    first.setCallback([&](AdapterFeature* changed) {
        EXPECT_EQ(changed, &feature);
        told += "first, ";
        feature.addObserver(&third);
    });
    feature.addObserver(&first);
    const auto second = observe(feature, [&] { told += "second, "; });
    EXPECT_EQ(failureOfWrite(feature, "2147483648"), "Cannot parse char array to a number value");
    feature.write("3");
    EXPECT_EQ(told, "first, second, third, added meanwhile");

    told.clear();
    first.setCallback([](AdapterFeature*) { throw AIKException("refused"); });
    EXPECT_EQ(failureOfWrite(feature, "4"), "refused");
    EXPECT_EQ(feature.value(), 4);
    first.setCallback(nullptr);
    EXPECT_THROW(feature.write("5"), std::bad_function_call);
    EXPECT_EQ(told, "");
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

// Without a stream, with the results of one.
std::optional<double> byStream(const char* text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    double number = 0;
    stream >> number;
    return stream.fail() ? std::nullopt : std::optional<double>(number);
}

TEST(FloatText, IsReadAsByAStream)
{
    const std::string kManyZeros(400, '0');
    // clang-format off
    const std::string kTexts[] = {
        "0", "-0", "12.5", "-12.5mm", "1,5", "1.5.5", "1_000", "1d5", " \t\n\v\f\r 2.5", "\xA0 1",
        "+2.5", "+-2.5", "-+2.5", "--2.5", "++2.5", "+ 2.5", "", " ", "+", "-", "x",
        ".5", "5.", ".", ".e5", "5.e2", "1e5", "1E+5", "1e-5", "1e5e7", "1e", "1e+", "1E-x", "1ee5", "5e 3",
        "1.7976931348623157e308", "1.7976931348623159e308", "-1e999", "1e99999999999999999999",
        "5e-324", "2e-324", "-1e-999", "1e-99999999999999999999", "0e999", "0." + kManyZeros + "1",
        "0." + kManyZeros + "1e402", "1" + kManyZeros, "1" + kManyZeros + "e-401", "1" + kManyZeros + "e",
        "inf", "-inf", "infinity", "nan", "+nan", "nan(1)",
    };
    // clang-format on
    for (const std::string& text : kTexts) {
        const auto wanted = byStream(text.c_str());
        const auto found = parseNumber<double>(text.c_str());
        EXPECT_EQ(found, wanted) << '"' << text << '"';
        EXPECT_EQ(std::signbit(found.value_or(0)), std::signbit(wanted.value_or(0))) << '"' << text << '"';
    }
    // What a stream makes of these differs from library to library.
    for (const char* const text : {"0x1A", "-0X1p3", "0x"})
        EXPECT_EQ(parseNumber<double>(text), std::nullopt) << text;
}

TEST(FloatText, IsWrittenAsByAStream)
{
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (const double number : {0.0, -0.0, 41.5, 0.123456789, 100'000.0, 999'999.5, 1e6, 1'234'567.0, 0.0001,
                                0.00001, -1e300, 5e-324, kInfinity, -kInfinity}) {
        std::ostringstream stream;
        stream.imbue(std::locale::classic());
        stream << number;
        EXPECT_EQ(formatNumber(number), stream.str());
    }
    EXPECT_EQ(formatNumber(1e6), "1e+06");
    for (const double sign : {1.0, -1.0})
        EXPECT_EQ(formatNumber(std::copysign(std::nan(""), sign)), "nan");
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

// Floats are read and written without a stream, with the results of one.
#include <cmath>
#include <limits>
#include <locale>
#include <sstream>

#include <gtest/gtest.h>

#include "features/NumberText.h"

using namespace orvo::cognex;

namespace {

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

}   // namespace

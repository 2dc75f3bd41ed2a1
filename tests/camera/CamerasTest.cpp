#include <array>
#include <cstring>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "camera/eth/EthCamera.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcLibrary.h"
#include "tests/camera/CameraLibrariesFake.h"
#include "tests/support/Failures.h"

namespace orvo::cognex {

namespace {

using test::aikFailure;
using test::bareFailure;
using testing::ElementsAre;
using testing::IsEmpty;

template <typename FamilyCamera>
constexpr const char* kPrefix = "eth error code: ";
template <>
constexpr const char* kPrefix<OgcCamera> = "ogc error code: ";

template <typename FamilyCamera>
class CameraOfFamily : public testing::Test {
protected:
    test::CameraLibrariesFake libraries;
    FamilyCamera camera{5};
};
using Families = testing::Types<EthCamera, OgcCamera>;
TYPED_TEST_SUITE(CameraOfFamily, Families);

TYPED_TEST(CameraOfFamily, ReadsItsParameters)
{
    this->libraries.boolean = 2;
    bool boolean = false;
    this->camera.getBooleanValue("ReverseX", &boolean);
    EXPECT_TRUE(boolean);

    this->libraries.integer = -5'000'000'000;
    int64_t integer = 0;
    this->camera.getIntegerValue("Width", &integer);
    EXPECT_EQ(integer, -5'000'000'000);

    this->libraries.floatingPoint = 2.5;
    double floatingPoint = 0;
    this->camera.getFloatValue("Gain", &floatingPoint);
    EXPECT_EQ(floatingPoint, 2.5);
    EXPECT_THAT(this->libraries.journal,
                ElementsAre("getBoolean 5 ReverseX", "getInteger 5 Width", "getFloat 5 Gain"));
}

TYPED_TEST(CameraOfFamily, TakesATextFromItsOwnBufferOrFromTheLibrarys)
{
    std::string text;
    for (const bool intoBuffer : {true, false}) {
        this->libraries.textIntoBuffer = intoBuffer;
        this->libraries.text = intoBuffer ? "short" : "the library's";
        this->camera.getStringValue("DeviceUserID", &text);
        EXPECT_EQ(text, this->libraries.text);
    }
    this->libraries.text = nullptr;
    this->camera.getStringValue("DeviceUserID", &text);
    EXPECT_EQ(text, "");
}

TYPED_TEST(CameraOfFamily, LeavesTheValueAloneWhenTheLibraryRefuses)
{
    const std::string refusal = kPrefix<TypeParam> + std::string("-4");
    for (const char* call : {"getBoolean", "getInteger", "getFloat", "getString"})
        this->libraries.answers[call] = -4;
    bool boolean = true;
    EXPECT_EQ(aikFailure([&] { this->camera.getBooleanValue("A", &boolean); }), refusal);
    EXPECT_TRUE(boolean);
    int64_t integer = 3;
    EXPECT_EQ(aikFailure([&] { this->camera.getIntegerValue("A", &integer); }), refusal);
    EXPECT_EQ(integer, 3);
    double floatingPoint = 3;
    EXPECT_EQ(aikFailure([&] { this->camera.getFloatValue("A", &floatingPoint); }), refusal);
    EXPECT_EQ(floatingPoint, 3);
    std::string text = "old";
    EXPECT_EQ(aikFailure([&] { this->camera.getStringValue("A", &text); }), refusal);
    EXPECT_EQ(text, "old");
}

template <typename FamilyCamera>
void setAll(FamilyCamera& camera)
{
    camera.setBooleanValue("ReverseX", true);
    camera.setIntegerValue("Width", 640);
    camera.setFloatValue("Gain", 2.5);
    camera.setStringValue("DeviceUserID", "left");
    camera.setReservedA(1);
    camera.setReservedB(1);
}

class GigECamera : public testing::Test {
protected:
    test::CameraLibrariesFake libraries;
    EthCamera camera{5};
};

TEST_F(GigECamera, DropsWhatItsSettersAreGiven)
{
    setAll(camera);
    EXPECT_THAT(libraries.journal, IsEmpty());
}

TEST_F(GigECamera, IsDrivenThroughItsLibrary)
{
    camera.connect();
    camera.startAcquisition();
    camera.setWidth(-1);
    camera.setHeight(480);
    camera.stopAcquisition();
    EXPECT_THAT(libraries.journal, ElementsAre("connect 5", "start 5", "setInteger 5 Width -1",
                                               "setInteger 5 Height 480", "stop 5"));
}

TEST_F(GigECamera, TellsSomeFailuresInTheLibrarysWordsAndSomeByNumber)
{
    for (const char* call : {"connect", "disconnect", "start", "stop", "setInteger"})
        libraries.answers[call] = -9;
    EXPECT_EQ(aikFailure([&] { camera.connect(); }), "eth error code: -9");
    EXPECT_EQ(aikFailure([&] { camera.disconnect(); }), "eth error code: -9");
    EXPECT_EQ(aikFailure([&] { camera.setHeight(1); }), "eth error code: -9");
    EXPECT_EQ(bareFailure([&] { camera.startAcquisition(); }), "Eth_startAcquisition failed: out of order");
    EXPECT_EQ(bareFailure([&] { camera.stopAcquisition(); }), "Eth_stopAcquisition failed: out of order");
    EXPECT_EQ(bareFailure([&] { camera.setWidth(1); }), "Eth cannot set width: out of order");
    libraries.description = nullptr;
    EXPECT_EQ(bareFailure([&] { camera.setWidth(1); }), "Eth cannot set width: ");
}

TEST_F(GigECamera, ReleasesWhatAFailedDisconnectLeavesAndZeroAfterAGoodOne)
{
    {
        EthCamera stubborn(8);
        libraries.answers["disconnect 8"] = -9;
        aikFailure([&] { stubborn.disconnect(); });
        EthCamera willing(7);
        willing.disconnect();
    }
    EXPECT_THAT(libraries.journal, ElementsAre("disconnect 8", "disconnect 7", "release 0", "release 8"));
}

TEST_F(GigECamera, HasTheNameOfItsRecord)
{
    EXPECT_EQ(camera.getName(), "");
    std::array<char, 64> record{};
    std::strcpy(record.data() + 32, "Line camera");
    libraries.record = record.data();
    EXPECT_EQ(camera.getName(), "Line camera");
}

class GenICamCamera : public testing::Test {
protected:
    test::CameraLibrariesFake libraries;
    OgcCamera camera{5};
};

TEST_F(GenICamCamera, WritesItsParameters)
{
    setAll(camera);
    EXPECT_THAT(libraries.journal, ElementsAre("setBoolean 5 ReverseX 1", "setInteger 5 Width 640",
                                               "setFloat 5 Gain 2.5", "setString 5 DeviceUserID left"));
    libraries.answers["setInteger"] = -4;
    EXPECT_EQ(aikFailure([&] { camera.setIntegerValue("Width", 1); }), "ogc error code: -4");
}

TEST_F(GenICamCamera, LeavesTheStreamToTheApplet)
{
    camera.connect();
    camera.startAcquisition();
    camera.setWidth(1);
    camera.setHeight(1);
    camera.stopAcquisition();
    camera.disconnect();
    EXPECT_THAT(libraries.journal, IsEmpty());
}

TEST_F(GenICamCamera, HasTheNameOfItsRecord)
{
    EXPECT_EQ(camera.getName(), "");
    OgcCameraInfo record{.first = nullptr, .name = nullptr};
    libraries.record = &record;
    EXPECT_EQ(camera.getName(), "");
    record.name = "Area camera";
    EXPECT_EQ(camera.getName(), "Area camera");
}

}   // namespace

}   // namespace orvo::cognex

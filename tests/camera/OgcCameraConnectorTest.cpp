#include "camera/ogc/OgcCameraConnector.h"
#include "camera/ogc/OgcLibrary.h"
#include "tests/camera/ConnectorFixture.h"

namespace orvo::cognex {

namespace {

using test::aikFailure;
using test::available;
using testing::ElementsAre;
using testing::IsEmpty;

const std::set<uint32_t> kUninitialized = {0};
const std::set<uint32_t> kNoPorts = {1, 2};
const std::set<uint32_t> kCameraConnected = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};

class GenICamConnector : public test::ConnectorFixture<OgcCameraConnector> {
protected:
    GenICamConnector()
    {
        libraries.record = &record;
        libraries.answers["found"] = 1;
    }

    OgcCameraInfo record{.first = this, .name = "Area camera"};
};

TEST_F(GenICamConnector, FindsItsPortsByAScan)
{
    EXPECT_EQ(available(*features), kUninitialized);
    execute("InitializeCameraConnector");
    EXPECT_EQ(available(*features), kNoPorts);
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("open 85 0"));
    execute("Detect");
    EXPECT_EQ(available(*features), kCameraConnected);
    EXPECT_EQ(read("CameraName"), "Area camera");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("scan 1 255 5000 0", "found 1", "camera 1 0", "info 101",
                                                     "connect 101", "info 101"));
    execute("StartAcquisition");
    execute("StopAcquisition");
    EXPECT_THAT(libraries.takeJournal(), IsEmpty());
    libraries.answers["found"] = 0;
    execute("Detect");
    EXPECT_EQ(available(*features), kNoPorts);
    libraries.takeJournal();
    execute("CloseCameraConnector");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("close 1"));
    EXPECT_EQ(available(*features), kUninitialized);
    EXPECT_EQ(aikFailure([&] { connector->close(); }), "Camera connector is not initialized");
    EXPECT_EQ(aikFailure([&] { connector->detect(); }), "Camera connector is not initialized.");
}

TEST_F(GenICamConnector, GoesOnWithoutTheScanOrThePortsThatFail)
{
    execute("InitializeCameraConnector");
    libraries.answers["scan"] = -6;
    execute("Detect");
    EXPECT_EQ(available(*features), kNoPorts);
    libraries.answers.erase("scan");

    libraries.answers["found"] = 3;
    libraries.answers["camera 1 1"] = -6;
    execute("Detect");
    EXPECT_EQ(read("PortCount"), "2");
    EXPECT_EQ(aikFailure([&] { write("PortIndex", "1"); }),
              "Feature could not be written. (Selected port is not available.)");
    libraries.answers.erase("camera 1 1");

    for (OgcCameraInfo broken : {OgcCameraInfo{nullptr, "A"}, OgcCameraInfo{this, nullptr}}) {
        libraries.record = &broken;
        libraries.takeJournal();
        execute("Detect");
        EXPECT_EQ(available(*features), kNoPorts);
        EXPECT_THAT(libraries.takeJournal(), testing::Not(testing::Contains(testing::HasSubstr("connect"))));
    }
}

TEST_F(GenICamConnector, TellsTheNumbersOfItsOwnLibrary)
{
    libraries.answers["open"] = -3;
    EXPECT_EQ(failureOf("InitializeCameraConnector"), "Command could not be executed. (ogc error code: -3)");
    libraries.answers.erase("open");
    openAndDetect();
    libraries.answers["getInteger"] = -4;
    EXPECT_EQ(aikFailure([&] { read("CameraIntValue"); }), "Feature could not be read. (ogc error code: -4)");
    write("CameraFeatureKey", "ReverseX");
    write("CameraBooleanValue", "True");
    EXPECT_EQ(libraries.journal.back(), "setBoolean 101 ReverseX 0");
    applet.reset();
    connector->close();
    EXPECT_EQ(failureOf("InitializeCameraConnector"),
              "Command could not be executed. (No applet is loaded!)");
}

}   // namespace

}   // namespace orvo::cognex

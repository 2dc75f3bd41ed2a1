// What no host reaches: it has a camera's parameters through the configurator, and a port's size not at all.
#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "camera/CamPort.h"
#include "camera/ConnectionStrategy.h"
#include "camera/eth/EthCamera.h"
#include "tests/camera/LoadedCameras.h"
#include "tests/support/Failures.h"

namespace orvo::test {

namespace {

using cognex::Camera;

using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

/// The getters, which both families have; `getter` is how the names of the library's begin.
void expectGetters(Camera& camera, const std::string& getter, const std::string& refusal)
{
    bool boolean = false;
    int64_t integer = 0;
    double real = 0;
    std::string text;
    camera.getBooleanValue("AcquisitionFrameRateEnable", &boolean);
    camera.getFloatValue("DeviceTemperature", &real);
    camera.getStringValue("DeviceModelName", &text);
    EXPECT_TRUE(boolean);
    EXPECT_EQ(real, 41.5);
    EXPECT_EQ(text, "Simulated camera");
    const int64_t kLong = -5'000'000'000;
    OrvoSim_answerWith((getter + "IntegerValue").c_str(), 1, 0, &kLong, sizeof kLong);
    camera.getIntegerValue("Width", &integer);
    EXPECT_EQ(integer, kLong);

    const std::function<void()> kReads[] = {
        [&] { camera.getBooleanValue("None", &boolean); },
        [&] { camera.getIntegerValue("None", &integer); },
        [&] { camera.getFloatValue("None", &real); },
        [&] { camera.getStringValue("None", &text); },
    };
    for (const auto& read : kReads)
        EXPECT_EQ(aikFailure(read), refusal);
    EXPECT_TRUE(boolean);
    EXPECT_EQ(integer, kLong);
    EXPECT_EQ(real, 41.5);
    EXPECT_EQ(text, "Simulated camera");
    OrvoSim_answer((getter + "StringValue").c_str(), 1, 0);   // and hands out none
    camera.getStringValue("DeviceModelName", &text);
    EXPECT_EQ(text, "");
}

void setAll(Camera& camera)
{
    camera.setBooleanValue("ReverseX", true);
    camera.setIntegerValue("Height", 640);
    camera.setFloatValue("Gain", 2.5);
    camera.setStringValue("DeviceUserID", "left");
    camera.setReservedA(1);
    camera.setReservedB(1);
}

TEST_F(GigECameras, ReadAndDropWhatTheirSettersAreGiven)
{
    const auto camera = detected(0);
    camera->connect();
    expectGetters(*camera, "Eth_get", "eth error code: -3020");
    OrvoSim_clearJournal();
    setAll(*camera);
    EXPECT_THAT(takeJournal(), IsEmpty());
    camera->disconnect();
}

TEST_F(GenICamCameras, ReadAndWriteAndLeaveTheStreamToTheApplet)
{
    const auto camera = connected(0);
    expectGetters(*camera, "Ogc_get", "ogc error code: -3020");
    OrvoSim_clearJournal();
    setAll(*camera);
    EXPECT_THAT(takeJournal(),
                ElementsAre("Ogc_setBooleanValue camera=c1 name=\"ReverseX\" value=1 -> 0",
                            "Ogc_setIntegerValue camera=c1 name=\"Height\" value=640 -> 0",
                            "Ogc_setFloatValue camera=c1 name=\"Gain\" value=2.5 -> 0",
                            "Ogc_setStringValue camera=c1 name=\"DeviceUserID\" text=\"left\" -> 0"));
    EXPECT_EQ(aikFailure([&] { camera->setIntegerValue("Width", -4); }), "ogc error code: -3024");
    OrvoSim_clearJournal();
    camera->connect();
    camera->startAcquisition();
    camera->setWidth(640);
    camera->setHeight(480);
    camera->stopAcquisition();
    camera->disconnect();
    EXPECT_THAT(takeJournal(), IsEmpty());

    const cognex::OgcCameraInfo nameless{.first = this, .name = nullptr};
    OrvoSim_answerWith("Ogc_getCameraInfo", 1, 0, &nameless, sizeof nameless);
    EXPECT_EQ(camera->getName(), "");
}

class Port : public cognex::CamPort {
public:
    Port() : CamPort(0) {}
    using CamPort::setConnection;

protected:
    std::vector<std::shared_ptr<Camera>> detect() override { return {}; }
};

void expectNothingToDrive(Port& port)
{
    EXPECT_FALSE(port.isConnected());
    const std::function<void()> kDrives[] = {
        [&] { port.startAcquisition(); }, [&] { port.stopAcquisition(); }, [&] { port.setWidth(1); },
        [&] { port.setHeight(1); },       [&] { port.setReservedA(1); },   [&] { port.setReservedB(1); },
    };
    for (const auto& drive : kDrives)
        EXPECT_EQ(aikFailure(drive), "No camera is connected");
}

TEST_F(GigECameras, AreSizedByTheirPort)
{
    Port port;
    EXPECT_EQ(port.connection()->cameraCount(), 0U);
    EXPECT_EQ(aikFailure([&] { port.connection()->camera(0); }), "No camera connections.");
    expectNothingToDrive(port);

    const auto camera = detected(0);
    camera->connect();
    port.setConnection(std::make_shared<cognex::ConnectedConnection>(camera));
    EXPECT_TRUE(port.isConnected());
    EXPECT_EQ(aikFailure([&] { port.connection()->camera(1); }), "Invalid camera index.");
    OrvoSim_clearJournal();
    port.setWidth(640);
    port.setHeight(480);
    port.setReservedA(1);
    port.setReservedB(1);
    EXPECT_THAT(takeJournal(), ElementsAre("Eth_setIntegerValue camera=c1 name=\"Width\" value=640 -> 0",
                                           "Eth_setIntegerValue camera=c1 name=\"Height\" value=480 -> 0"));
    EXPECT_EQ(bareFailure([&] { port.setWidth(0xFFFF'FFFF); }),
              "Eth cannot set width: The value is out of the parameter's range");
    EXPECT_THAT(takeJournal().front(), EndsWith("value=-1 -> -3024"));
    EXPECT_EQ(aikFailure([&] { port.setHeight(0); }), "eth error code: -3024");
    OrvoSim_answer("Eth_getErrorDescription", 1, 0);
    EXPECT_EQ(bareFailure([&] { port.setWidth(0); }), "Eth cannot set width: ");
    port.update();
    expectNothingToDrive(port);
}

TEST_F(GigECameras, AreListedAndNotDrivenWhileTheyAreDetectedOnly)
{
    const auto connection = std::make_shared<cognex::DetectedConnection>();
    connection->addCamera(detected(0));
    std::vector<std::shared_ptr<Camera>> others = {detected(1)};
    connection->addCameras(others);
    EXPECT_THAT(others, IsEmpty());
    Port port;
    port.setConnection(connection);
    expectNothingToDrive(port);
    EXPECT_EQ(connection->cameraCount(), 2U);
    EXPECT_EQ(locked(port.connection()->camera(1))->getName(), "Camera 0-1");
    EXPECT_EQ(failureText<std::out_of_range>([&] { port.connection()->camera(2); }),
              "invalid vector<T> subscript");
    OrvoSim_clearJournal();
    port.update();
    EXPECT_THAT(takeJournal("Eth_disconnectCamera"), IsEmpty());
}

TEST_F(GenICamCameras, AreNoneForTheConfiguratorOfTheOtherFamily)
{
    const auto stranger = connected(0);
    cognex::EthCameraConfigurator configurator;
    configurator.setCamera(stranger);
    char val[256] = {};
    EXPECT_EQ(aikFailure([&] { configurator.getInt(val); }), "No camera is connected");
    EXPECT_EQ(aikFailure([&] { configurator.executeCommand(); }), "No camera is connected");
}

}   // namespace

}   // namespace orvo::test

// What no host reaches: it has a camera's parameters through the configurator, sets no sizes, keeps the applet
// loaded, and has its commands refused while a connector is closed.
#include <stdexcept>
#include <tuple>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "camera/ConnectionStrategy.h"
#include "camera/eth/EthCamera.h"
#include "camera/eth/EthCameraConnector.h"
#include "camera/eth/EthLibrary.h"
#include "camera/ogc/OgcCamera.h"
#include "camera/ogc/OgcCameraConnector.h"
#include "camera/ogc/OgcLibrary.h"
#include "channels/CameraFamilies.h"
#include "tests/brdlib/LoadedApplet.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"

namespace orvo::test {

namespace {

using namespace cognex;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kGigEVisionBoard = 2897;
constexpr int kGenICamBoard = 1872;

/// A board with cameras behind its ports 0 and 1.
class Cameras : public LoadedApplet {
protected:
    ~Cameras() override
    {
        port.reset();
        if (m_close)
            m_close(m_library);
    }

    void loadBoard(int type, const std::vector<json>& processes = {Machine::process({Machine::dma()})})
    {
        json grabber = Machine::grabber(0, type);
        grabber["cameras"] = {{{"port", 0}}, {{"port", 1}}};
        load(Machine::appletOf(processes), grabber);
    }
    std::unique_ptr<CameraConnector> connector() const
    {
        return createCameraConnector(board, board->applet());
    }
    // A board of the family, and the camera behind its port 0, connected.
    void connectGigEVision()
    {
        loadBoard(kGigEVisionBoard);
        EXPECT_EQ(Eth_openBoard(0, 0, &m_library), 0);
        m_close = Eth_closeBoard;
        connect(std::make_shared<EthCamPort>(0, m_library));
    }
    void connectGenICam()
    {
        loadBoard(kGenICamBoard);
        EXPECT_EQ(Ogc_openBoard(reinterpret_cast<uint64_t>(board->applet()->handle()), 0, &m_library), 0);
        EXPECT_EQ(Ogc_scanPorts(m_library, 255, 5000, 0), 0);
        m_close = Ogc_closeBoard;
        connect(std::make_shared<OgcCamPort>(0, m_library));
    }

    std::shared_ptr<CamPort> port;
    std::shared_ptr<Camera> camera;

private:
    void connect(std::shared_ptr<CamPort> opened)
    {
        port = std::move(opened);
        port->update();
        camera = locked(port->connection()->camera(0));
        OrvoSim_clearJournal();
    }

    uint64_t m_library = 0;
    int32_t (*m_close)(uint64_t) = nullptr;
};

Lines callsOfSetters(Camera& camera)
{
    OrvoSim_clearJournal();
    camera.setBooleanValue("ReverseX", true);
    camera.setIntegerValue("Height", 640);
    camera.setFloatValue("Gain", 2.5);
    camera.setStringValue("DeviceUserID", "left");
    camera.setReservedA(1);
    camera.setReservedB(1);
    return takeJournal();
}

TEST_F(Cameras, ReadTheirParameters)
{
    connectGigEVision();
    bool boolean = false;
    int64_t integer = 0;
    double real = 0;
    std::string text;
    const int64_t kLong = -5'000'000'000;
    OrvoSim_answerWith("Eth_getIntegerValue", 1, 0, &kLong, sizeof kLong);
    camera->getBooleanValue("AcquisitionFrameRateEnable", &boolean);
    camera->getIntegerValue("Width", &integer);
    camera->getFloatValue("DeviceTemperature", &real);
    camera->getStringValue("DeviceModelName", &text);
    EXPECT_EQ(aikFailure([&] { camera->getIntegerValue("None", &integer); }), "eth error code: -3020");
    EXPECT_EQ(std::tie(boolean, integer, real, text),
              std::make_tuple(true, kLong, 41.5, std::string("Simulated camera")));
    EXPECT_THAT(callsOfSetters(*camera), IsEmpty());   // which only the other family has
}

TEST_F(Cameras, OfGenICamWriteTheirParametersAndLeaveTheStreamToTheApplet)
{
    connectGenICam();
    EXPECT_THAT(callsOfSetters(*camera),
                ElementsAre("Ogc_setBooleanValue camera=c1 name=\"ReverseX\" value=1 -> 0",
                            "Ogc_setIntegerValue camera=c1 name=\"Height\" value=640 -> 0",
                            "Ogc_setFloatValue camera=c1 name=\"Gain\" value=2.5 -> 0",
                            "Ogc_setStringValue camera=c1 name=\"DeviceUserID\" text=\"left\" -> 0"));
    camera->connect();
    camera->setWidth(640);
    camera->setHeight(480);
    camera->disconnect();
    EXPECT_THAT(takeJournal(), IsEmpty());

    const auto ofTheOtherFamily = createCameraConfigurator(1);
    ofTheOtherFamily->setCamera(camera);
    EXPECT_EQ(aikFailure([&] { ofTheOtherFamily->executeCommand(); }), "No camera is connected");
}

void expectNothingToDrive(CamPort& port)
{
    EXPECT_FALSE(port.isConnected());
    EXPECT_EQ(aikFailure([&] { port.stopAcquisition(); }), "No camera is connected");
    for (const auto set :
         {&CamPort::setWidth, &CamPort::setHeight, &CamPort::setReservedA, &CamPort::setReservedB})
        EXPECT_EQ(aikFailure([&] { (port.*set)(1); }), "No camera is connected");
}

TEST_F(Cameras, AreSizedByTheirPortWhileTheyAreConnected)
{
    connectGigEVision();
    EXPECT_EQ(aikFailure([&] { port->connection()->camera(1); }), "Invalid camera index.");
    port->setWidth(640);
    port->setHeight(480);
    port->setReservedA(1);
    port->setReservedB(1);
    EXPECT_THAT(takeJournal(), ElementsAre("Eth_setIntegerValue camera=c1 name=\"Width\" value=640 -> 0",
                                           "Eth_setIntegerValue camera=c1 name=\"Height\" value=480 -> 0"));
    OrvoSim_answerWith("Eth_getErrorDescription", 1, 0, "too wide", sizeof "too wide");
    EXPECT_EQ(bareFailure([&] { port->setWidth(0xFFFF'FFFF); }), "Eth cannot set width: too wide");
    EXPECT_THAT(takeJournal().front(), testing::HasSubstr("value=-1"));
    OrvoSim_answer("Eth_getErrorDescription", 1, 0);   // and hands out none
    EXPECT_EQ(bareFailure([&] { port->setWidth(0); }), "Eth cannot set width: ");

    port->disconnect();
    expectNothingToDrive(*port);
    EXPECT_EQ(aikFailure([&] { port->connection()->camera(0); }), "No camera connections.");
}

TEST_F(Cameras, AreListedAndNotDrivenWhileTheyAreOnlyDetected)
{
    struct OpenPort : EthCamPort {
        using EthCamPort::EthCamPort;
        using EthCamPort::setConnection;
    };
    connectGigEVision();
    const auto connection = std::make_shared<DetectedConnection>();
    connection->addCamera(std::make_shared<EthCamera>(0));
    std::vector<std::shared_ptr<Camera>> others = {camera};
    connection->addCameras(others);
    EXPECT_THAT(others, IsEmpty());
    OpenPort detected(1, 0);
    detected.setConnection(connection);
    expectNothingToDrive(detected);
    EXPECT_EQ(detected.connection()->camera(1).lock(), camera);
    EXPECT_EQ(failureText<std::out_of_range>([&] { connection->camera(2); }), "invalid vector<T> subscript");
    detected.disconnect();
    EXPECT_THAT(takeJournal("Eth_disconnectCamera"), IsEmpty());
}

using CameraConnectors = Cameras;

template <typename Wanted, typename Made>
bool isA(const std::unique_ptr<Made>& made)
{
    return dynamic_cast<Wanted*>(made.get()) != nullptr;
}

TEST_F(CameraConnectors, AreChosenByTheTypeOfTheBoard)
{
    struct Types {
        int32_t first, last;
        bool areGigEVision;
    };
    const Types kTypes[] = {
        {2897, 2899, true},    {3650, 3650, true},    {3652, 3652, true},
        {1872, 1881, false},   {2624, 2629, false},   {2641, 2650, false},
        {29968, 29969, false}, {30016, 30017, false}, {30097, 30097, false},
    };
    loadBoard(kGigEVisionBoard);
    for (const auto& [first, last, areGigEVision] : kTypes) {
        for (int32_t type = first - 1; type <= last + 1; ++type) {
            OrvoSim_answer("Brd_getBoardType", 1, type);
            std::unique_ptr<CameraConnector> made;
            const std::string failure = aikFailure([&] { made = connector(); });
            const bool isKnown = type >= first && type <= last;
            EXPECT_EQ(isA<EthCameraConnector>(made), isKnown && areGigEVision) << type;
            EXPECT_EQ(isA<OgcCameraConnector>(made), isKnown && !areGigEVision) << type;
            EXPECT_EQ(failure, isKnown ? "no failure" : "Cam port type is not connectable.");
        }
    }
    OrvoSim_answer("Brd_getBoardType", 1, -1);
    EXPECT_EQ(bareFailure([&] { connector(); }), "Cannot detect board type");

    EXPECT_TRUE(isA<OgcCameraConfigurator>(createCameraConfigurator(0)));
    EXPECT_TRUE(isA<EthCameraConfigurator>(createCameraConfigurator(1)));
    for (const int32_t portType : {-1, 2})
        EXPECT_EQ(aikFailure([&] { createCameraConfigurator(portType); }), "Cam port type is unknown.");
}

TEST_F(CameraConnectors, RefuseToWorkWhileTheyAreClosedAndToOpenWithoutAnApplet)
{
    loadBoard(kGigEVisionBoard);
    auto eth = connector();
    EXPECT_EQ(aikFailure([&] { eth->close(); }), "Eth camera connector is not initialized");
    EXPECT_NO_THROW(eth->detect());   // there is nothing to search
    eth->setApplet({});
    EXPECT_EQ(aikFailure([&] { eth->initialize(); }), "No applet is loaded!");
    eth.reset();
    EXPECT_THAT(takeJournal("Eth_*"), testing::SizeIs(2));   // the library is opened, and closed

    OrvoSim_answer("Brd_getBoardType", 1, kGenICamBoard);
    const auto ogc = connector();
    EXPECT_EQ(aikFailure([&] { ogc->close(); }), "Camera connector is not initialized");
    EXPECT_EQ(aikFailure([&] { ogc->detect(); }), "Camera connector is not initialized.");
    ogc->setApplet({});
    EXPECT_EQ(aikFailure([&] { ogc->initialize(); }), "No applet is loaded!");
    EXPECT_THAT(takeJournal("Ogc_*"), IsEmpty());
}

TEST_F(CameraConnectors, HaveEachPortOfAllProcessesOnce)
{
    std::vector<json> processes = {Machine::process({Machine::dma(0)}), Machine::process({Machine::dma(1)})};
    processes[0]["cameraPorts"] = {0, 1};
    processes[1]["cameraPorts"] = {1, 2};
    loadBoard(kGigEVisionBoard, processes);
    const auto eth = connector();
    eth->initialize();
    EXPECT_EQ(reading(*eth->features().lock(), "PortCount"), "3");
    eth->detect();
    EXPECT_EQ(reading(*eth->features().lock(), "CameraName"), "Camera 0-0");
}

}   // namespace

}   // namespace orvo::test

#include <functional>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "camera/CamPort.h"
#include "camera/DetectedConnection.h"
#include "camera/eth/EthCamera.h"
#include "tests/camera/CameraLibrariesFake.h"
#include "tests/support/Failures.h"

namespace orvo::cognex {

namespace {

using test::aikFailure;
using test::failureText;
using testing::ElementsAre;
using testing::IsEmpty;

using Cameras = std::vector<std::shared_ptr<Camera>>;

/// Finds what the test says.
class ScriptedPort : public CamPort {
public:
    explicit ScriptedPort(test::CameraLibrariesFake& libraries) : CamPort(0), m_libraries(libraries) {}

    std::function<Cameras()> found = [] { return Cameras(); };

    void finds(std::initializer_list<uint64_t> handles)
    {
        found = [handles = std::vector(handles)] {
            Cameras cameras;
            for (const uint64_t handle : handles)
                cameras.push_back(std::make_shared<EthCamera>(handle));
            return cameras;
        };
    }
    using CamPort::setConnection;

protected:
    Cameras detect() override
    {
        m_libraries.journal.emplace_back("search");
        return found();
    }

private:
    test::CameraLibrariesFake& m_libraries;
};

class Port : public testing::Test {
protected:
    void expectNoConnection()
    {
        EXPECT_FALSE(port.isConnected());
        EXPECT_EQ(port.connection()->cameraCount(), 0U);
        EXPECT_EQ(aikFailure([&] { port.connection()->camera(0); }), "No camera connections.");
        expectNothingToDrive();
    }
    void expectNothingToDrive()
    {
        const std::function<void()> kDrives[] = {
            [&] { port.startAcquisition(); }, [&] { port.stopAcquisition(); }, [&] { port.setWidth(1); },
            [&] { port.setHeight(1); },       [&] { port.setReservedA(1); },   [&] { port.setReservedB(1); },
        };
        for (const auto& drive : kDrives)
            EXPECT_EQ(aikFailure(drive), "No camera is connected");
    }

    test::CameraLibrariesFake libraries;
    ScriptedPort port{libraries};
};

TEST_F(Port, HasNoConnectionBeforeASearchNorAfterAVainOrFailedOne)
{
    expectNoConnection();
    port.update();
    expectNoConnection();
    port.found = []() -> Cameras { throw AIKException("The net is down"); };
    EXPECT_EQ(aikFailure([&] { port.update(); }), "The net is down");
    expectNoConnection();
    EXPECT_EQ(aikFailure([&] { port.update(); }), "The net is down");
}

TEST_F(Port, DrivesTheFirstCameraFound)
{
    port.finds({5, 6});
    port.update();
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("search", "release 6"));
    EXPECT_TRUE(port.isConnected());
    EXPECT_EQ(port.connection()->cameraCount(), 1U);
    EXPECT_EQ(aikFailure([&] { port.connection()->camera(1); }), "Invalid camera index.");
    port.startAcquisition();
    port.setWidth(640);
    port.setHeight(0xFFFFFFFF);
    port.stopAcquisition();
    EXPECT_THAT(libraries.takeJournal(),
                ElementsAre("start 5", "setInteger 5 Width 640", "setInteger 5 Height -1", "stop 5"));
}

TEST_F(Port, TakesLeaveOfItsCameraBeforeItSearchesAnew)
{
    port.finds({5});
    port.update();
    libraries.takeJournal();
    port.found = [] { return Cameras(); };
    port.update();
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("disconnect 5", "release 0", "search"));
    expectNoConnection();
}

TEST_F(Port, LosesACameraThatRefusesToDisconnectAndSearchesOnlyTheNextTime)
{
    port.finds({5});
    port.update();
    libraries.takeJournal();
    libraries.answers["disconnect"] = -9;
    EXPECT_EQ(aikFailure([&] { port.update(); }), "eth error code: -9");
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("disconnect 5", "release 5"));
    expectNoConnection();
    port.update();
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("search"));
    EXPECT_TRUE(port.isConnected());
}

TEST_F(Port, DropsARefusalToDisconnectWhenItGoes)
{
    libraries.answers["disconnect"] = -9;
    {
        ScriptedPort shortLived(libraries);
        shortLived.finds({5});
        shortLived.update();
        libraries.takeJournal();
    }
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("disconnect 5", "release 5"));
}

TEST_F(Port, ListsDetectedCamerasAndDoesNotDriveThem)
{
    auto detected = std::make_shared<DetectedConnection>();
    detected->addCamera(std::make_shared<EthCamera>(5));
    Cameras others = {std::make_shared<EthCamera>(6)};
    detected->addCameras(others);
    EXPECT_THAT(others, IsEmpty());
    port.setConnection(detected);
    detected.reset();

    EXPECT_FALSE(port.isConnected());
    EXPECT_EQ(port.connection()->cameraCount(), 2U);
    EXPECT_EQ(std::dynamic_pointer_cast<EthCamera>(port.connection()->camera(1).lock())->handle(), 6U);
    EXPECT_EQ(failureText<std::out_of_range>([&] { port.connection()->camera(2); }),
              "invalid vector<T> subscript");
    expectNothingToDrive();
    port.update();
    EXPECT_THAT(libraries.takeJournal(), ElementsAre("release 5", "release 6", "search"));
}

}   // namespace

}   // namespace orvo::cognex

#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

class Steps : public AikctlTest {
protected:
    Steps()
    {
        applet(0);
        applet(1);
    }
};

TEST_F(Steps, AreDoneInOrderOnOneOpenChannel)
{
    const Outcome done = run({"do",   "0",
                              "exec", "InitializeCameraConnector",
                              "get",  "PortCount",
                              "exec", "Detect",
                              "set",  "PortIndex=1",
                              "get",  "CameraName",
                              "set",  "CameraFeatureKey=Width",
                              "set",  "CameraIntValue=320",
                              "get",  "CameraIntValue",
                              "exec", "CloseCameraConnector"});
    EXPECT_EQ(done.exitCode, 0) << done.err;
    EXPECT_EQ(done.out, "PortCount=2\nCameraName=Camera 0-1\nCameraIntValue=320\n");
}

TEST_F(Steps, HaveShortForms)
{
    EXPECT_EQ(run({"set", "0", "BufferCount=9"}).exitCode, 0);
    EXPECT_EQ(run({"get", "0", "BufferCount"}).out, "5\n");   // another life of the channel
    EXPECT_EQ(run({"get", "2", "CameraFloatValue", "--camera", "--key", "ExposureTime"}).out, "10000\n");
    EXPECT_EQ(
        run({"get", "0", "CameraStringValue", "--camera", "--port", "1", "-k", "DeviceSerialNumber"}).out,
        "SIM-0-1\n");
    EXPECT_EQ(run({"get", "0", "BrdIntValue", "--key", "BRD_WIDTH"}).out, "640\n");
    EXPECT_EQ(run({"exec", "2", "CameraCommand", "--camera", "-k", "UserSetLoad"}).exitCode, 0);
    EXPECT_EQ(run({"get", "0", "BufferCount", "--json"}).json()["readings"],
              (nlohmann::json::array({{{"feature", "BufferCount"}, {"value", "5"}}})));
}

TEST_F(Steps, EndAtTheFirstThatFailsAndLeaveTheCameraInOrder)
{
    const Outcome done =
        run({"do", "0", "--camera", "get", "PortCount", "set", "PortCount=7", "get", "PortIndex"});
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_EQ(done.out, "PortCount=2\n");
    EXPECT_EQ(done.err,
              "aikctl: set PortCount=7: Feature could not be written. (Feature is not writeable.)\n");
    EXPECT_EQ(journal("Eth_closeBoard").size(), 1U);

    const Outcome noCamera = run({"get", "0", "CameraIntValue", "--key", "Width"});
    EXPECT_EQ(noCamera.exitCode, 1);
    EXPECT_NE(noCamera.err.find("--camera does that"), std::string::npos) << noCamera.err;
}

TEST_F(Steps, NeedAChannelThatWorks)
{
    noApplet(1);
    EXPECT_EQ(run({"get", "3", "PortCount"}).err, "aikctl: There is no channel 3\n");
    EXPECT_EQ(run({"get", "2", "PortCount"}).err,
              "aikctl: Channel 2: ORVO_COGNEX_APPLET_1 is not a valid environment variable.\n");
    EXPECT_EQ(journal("Brd_InitLibraries").size(), journal("Brd_FreeLibraries").size());
}

}   // namespace
}   // namespace orvo::aikctl

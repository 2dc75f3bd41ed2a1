#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

using Steps = AikctlTest;

TEST_F(Steps, AreCarriedOutInOrderOnOneOpenChannel)
{
    const Outcome done =
        run("do 0 exec InitializeCameraConnector get PortCount exec Detect set PortIndex=1 get CameraName "
            "set CameraFeatureKey=Width set CameraIntValue=320 get CameraIntValue exec CloseCameraConnector");
    EXPECT_EQ(done.exitCode, 0) << done.err;
    EXPECT_EQ(done.out, "PortCount=2\nCameraName=Camera 0-1\nCameraIntValue=320\n");
}

TEST_F(Steps, HaveShortForms)
{
    const std::pair<std::string, std::string> forms[] = {
        {"set 0 BufferCount=9", ""},
        {"get 0 BufferCount", "5\n"},   // set, but on a channel that was closed since
        {"get 2 CameraFloatValue --camera --key ExposureTime", "10000\n"},
        {"get 0 CameraStringValue --camera --port 1 -k DeviceSerialNumber", "SIM-0-1\n"},
        {"get 0 BrdIntValue --key BRD_WIDTH", "640\n"},
        {"exec 2 CameraCommand --camera -k UserSetLoad", ""},
    };
    for (const auto& [arguments, output] : forms) {
        const Outcome done = run(arguments);
        EXPECT_EQ(done.exitCode, 0) << done.err;
        EXPECT_EQ(done.out, output);
    }
    EXPECT_EQ(journal("Ogc_executeCommand").size(), 1U);
    EXPECT_EQ(run("get 0 BufferCount --json").json()["readings"],
              (json::array({{{"feature", "BufferCount"}, {"value", "5"}}})));
}

TEST_F(Steps, EndAtTheFirstFailureAndCloseTheCamera)
{
    const Outcome done = run("do 0 --camera get PortCount set PortCount=7 get PortIndex");
    EXPECT_EQ(done.exitCode, 1);
    EXPECT_EQ(done.out, "PortCount=2\n");
    EXPECT_EQ(done.err,
              "aikctl: set PortCount=7: Feature could not be written. (Feature is not writeable.)\n");
    EXPECT_EQ(journal("Eth_closeBoard").size(), 1U);

    const Outcome noCamera = run("get 0 CameraIntValue --key Width");
    EXPECT_EQ(noCamera.exitCode, 1);
    EXPECT_THAT(noCamera.err, HasSubstr("--camera does that"));
}

TEST_F(Steps, NeedAChannelThatWorks)
{
    noApplet(1);
    EXPECT_EQ(run("get 3 PortCount").err, "aikctl: There is no channel 3: the last one is 2\n");
    EXPECT_EQ(run("get 2 PortCount").err, "aikctl: Channel 2: " + noAppletFailure(1) + "\n");
    EXPECT_EQ(journal("Brd_InitLibraries").size(), journal("Brd_FreeLibraries").size());
}

}   // namespace
}   // namespace orvo::aikctl

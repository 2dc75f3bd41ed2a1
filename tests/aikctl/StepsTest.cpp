#include <algorithm>

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
        {"set 0 BufferCount=9", "9\n"},
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
    EXPECT_EQ(done.err, "aikctl: step 2 of channel 0: set PortCount=7: Feature could not be written. "
                        "(Feature is not writeable.)\n");
    EXPECT_EQ(journal("Eth_closeBoard").size(), 1U);

    const Outcome noCamera = run("get 0 CameraIntValue --key Width");
    EXPECT_EQ(noCamera.exitCode, 1);
    EXPECT_THAT(noCamera.err, HasSubstr("--camera does that"));
}

TEST_F(Steps, AcquirePictures)
{
    const Outcome done = run("do 1 --camera --port 1 setup start exec StartAcquisition wait 3 grab 2 "
                             "expect PortIndex=+1 --json");
    const json results = done.json();
    ASSERT_EQ(results["pictures"].size(), 2U) << done.err;
    EXPECT_LT(results["pictures"][0]["timestamp"], results["pictures"][1]["timestamp"]);
    EXPECT_EQ(results["pictures"][0]["bytes"], 640 * 480);
    EXPECT_THAT(journal("Brd_stopAcquireEx Eth_closeBoard").front(), HasSubstr("stop"));   // by no step

    const std::pair<std::string, std::string> failing[] = {
        {"setup start sleep 1 grab 1 --timeout 0.01", "step 4 of channel 0: grab 1: No picture came in time"},
        {"setup start wait 1 --timeout 0.01",
         "step 3 of channel 0: wait 1: No picture came in time: 0 so far"},
        {"grab 1", "step 1 of channel 0: grab 1: Call setup() before grab()"},
        {"get BufferCount expect BufferCount=6", "step 2 of channel 0: expect BufferCount=6: it is 5"},
    };
    for (const auto& [steps, complaint] : failing)
        EXPECT_THAT(run("do 0 " + steps).err, testing::StartsWith("aikctl: " + complaint));
}

TEST_F(Steps, SayWhatBecameOfAWrittenValue)
{
    const std::string ofGain = " -k Gain --camera --port 0";
    const std::string ofReverse = " -k ReverseX --camera --port 0";
    const std::tuple<std::string, std::string, std::string> writes[] = {
        {"BufferCount=8", "8\n", "BufferCount keeps this value only while this command runs"},
        {"BufferCount=1e1", "", "channel 0: set BufferCount=1e1: \"1e1\" is no whole number"},
        {"BufferCount=8abc --as-is", "8\n", "only while"},
        {"CameraFloatValue=1,5" + ofGain, "",
         "channel 0, port 0, key Gain: set CameraFloatValue=1,5: \"1,5\" is"},
        {"CameraFloatValue=1e1" + ofGain, "10\n", ""},
        {"CameraFloatValue=1.23456789" + ofGain, "1.23457\n",
         "it reads back as 1.23457, rounded to six digits"},
        {"CameraBooleanValue=True" + ofReverse, "False\n", "\"True\" switches off"},
        {"CameraBooleanValue --on" + ofReverse, "True\n", ""},
        {"BrdIntValue --off -k BRD_WIDTH", "", "BrdIntValue is no boolean feature"},
        {"BrdIntValue=5", "", "channel 0: set BrdIntValue=5: "},   // without a key
    };
    for (const auto& [write, value, remark] : writes) {
        const Outcome done = run("set 0 " + write);
        EXPECT_EQ(done.out, value) << write;
        EXPECT_EQ(done.exitCode, value.empty() ? 1 : 0);
        EXPECT_THAT(done.err, HasSubstr(remark));
        EXPECT_EQ(done.err.empty(), remark.empty()) << done.err;
    }
    OrvoSim_answer("Eth_setFloatValue name=\"Gain\"", 1, 0);   // says yes and does nothing
    EXPECT_THAT(run("set 0 CameraFloatValue=3" + ofGain).err, HasSubstr("it reads back as 0"));
}

TEST_F(Steps, UseTheCameraThatIsMeant)
{
    const std::tuple<std::string, int, std::string> choices[] = {
        {"get 1 CameraName --camera", 1, "has cameras at ports 0 and 1, and nothing tells which one feeds"},
        {"get 1 CameraName --camera --port 7", 1, "no camera at port 7, but at ports 0 and 1"},
        {"do 1 --camera set PortIndex=7 get CameraName", 1, "No camera is connected at port 7"},
        {"get 1 CogAdapterVersion --camera", 1, "never makes it available"},
        {"do 1 --camera set PortIndex=0 get CameraName", 0, ""},
        {"get 0 CameraName --camera --probe", 0, "channel 0: the camera at port 0 feeds it"},
        {"get 2 CameraName --camera --probe", 1, "channel 2: pictures come before a camera is started"},
    };
    for (const auto& [arguments, exitCode, remark] : choices) {
        const Outcome done = run(arguments);
        EXPECT_EQ(done.exitCode, exitCode) << arguments;
        EXPECT_THAT(done.err, HasSubstr(remark));
    }
    applet(0, {{"processes", {{{"dmas", 1}, {"cameraPorts", {{{"port", 1}, {"dma", 0}}, 0}}}}}});
    EXPECT_EQ(run("get 0 CameraName --camera --probe --timeout 2").out, "Camera 0-1\n");
}

TEST_F(Steps, GoOnWithTheCamerasThatAnswer)
{
    OrvoSim_answer("Eth_connectCamera camera=c2", 1, -9);
    const Outcome one = run("do 0 --camera get CameraName");
    EXPECT_EQ(one.out, "CameraName=Camera 0-0\n");
    EXPECT_EQ(one.err, "aikctl: channel 0: search for cameras: Command could not be executed. "
                       "(eth error code: -9) (port 1 refuses)\n");
    EXPECT_EQ(one.exitCode, 1);

    OrvoSim_answer("Eth_connectCamera camera=c1", 1, -9);
    EXPECT_THAT(run("get 0 CameraName --camera").err,
                HasSubstr("(port 0 or 1 refuses, and those after it were not searched)"));

    OrvoSim_answer("Eth_startAcquisition camera=c1", 1, -9);
    const Outcome grabbed = grab("1 --count 1");
    EXPECT_EQ(grabbed.exitCode, 0);
    EXPECT_THAT(grabbed.err, testing::StartsWith("aikctl: channel 1, port 0: start of the camera: "));
}

TEST_F(Steps, AreNotNeededToSeeTheKnownParameters)
{
    const json all = run("params 1 --json").json();
    EXPECT_EQ(all["board"][0], (json{{"name", "BRD_WIDTH"}, {"kind", "integer"}, {"value", "640"}}));
    ASSERT_EQ(all["cameras"].size(), 2U);
    EXPECT_EQ(all["cameras"][1]["name"], "Camera 0-1");
    const json& parameters = all["cameras"][1]["parameters"];
    for (const json& known : {json{{"name", "ReverseX"}, {"kind", "boolean"}, {"value", "False"}},
                              {{"name", "ExposureTime"}, {"kind", "float"}, {"value", "10000"}},
                              {{"name", "PixelFormat"}, {"kind", "enumeration"}, {"value", "Mono8"}}})
        EXPECT_TRUE(std::ranges::count(parameters, known) == 1) << known;

    EXPECT_EQ(run("params 0 --port 1 --json").json()["cameras"].size(), 1U);
    EXPECT_THAT(run("params 0 --port 1").out, testing::ContainsRegex("\nport 1 +Width +integer +1280\n"));
    OrvoSim_clearJournal();
    EXPECT_EQ(run("params 0 --no-camera --json").json()["cameras"], json::array());
    EXPECT_TRUE(journal("Eth_*").empty());

    json board = test::Machine::grabber(0);
    board["cameras"] = {{{"port", 0}}, {{"port", 1}, {"vanishAfterCalls", 30}}};
    m_machine.boards({board});
    const Outcome partly = run("params 0");
    EXPECT_EQ(partly.exitCode, 1);
    EXPECT_EQ(partly.err, "aikctl: channel 0, port 1: the camera doesn't answer\n"
                          "aikctl: channel 0: closing the cameras: Command could not be executed. "
                          "(eth error code: -3014)\n");
    EXPECT_THAT(partly.out, HasSubstr("port 1  DeviceVendorName"));
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

#include "tests/system/CameraTest.h"

namespace orvo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// Two connected GigE Vision cameras, c1 and c2, of which a failed search can lose one.
class LostCameras : public CameraTest {
protected:
    LostCameras()
    {
        openBoard(kGigEVision);
        connect();
    }

    /// What the library is asked when the host writes a key for the camera of that port, with port 0 lost.
    Lines writtenAfterPort0IsLost(const char* port)
    {
        EXPECT_EQ(write("PortIndex", port), done());
        OrvoSim_answer("Eth_scanPorts", 1, -7);
        EXPECT_EQ(execute("Detect"), cannotExecute("eth error code: -7"));
        write("EthActionCommand_DeviceKeyRemote", "4");
        return takeJournal("Eth_setCameraRegister");
    }
};

TEST_F(LostCameras, AreForgottenByTheActionCommands)
{
    EXPECT_THAT(
        writtenAfterPort0IsLost("0"),
        ElementsAre("Eth_setCameraRegister camera=null name=\"actionDeviceKey\" value=4 one=1 -> -3012"));
    EXPECT_EQ(execute("EthActionCommand_Send"), done());
    EXPECT_EQ(execute("Detect"), done());
    EXPECT_EQ(execute("EthActionCommand_ApplyGroupRemote"), done());
}

TEST_F(LostCameras, LeaveTheActionCommandsOfAnotherPortAlone)
{
    EXPECT_THAT(writtenAfterPort0IsLost("1"),
                ElementsAre("Eth_setCameraRegister camera=c2 name=\"actionDeviceKey\" value=4 one=1 -> 0"));
}

using ImplausibleCounts = EitherFamily;
ORVO_FOR_BOTH_FAMILIES(ImplausibleCounts);

TEST_P(ImplausibleCounts, OfCamerasAreNone)
{
    openBoard(GetParam());
    for (const int32_t count : {65'536, -1}) {
        OrvoSim_answerWith("Brd_getParameterWithType id=3060", 1, 0, &count, sizeof count);
        OrvoSim_answer("Ogc_getFoundCount", 1, count);
        EXPECT_EQ(execute("InitializeCameraConnector"), done());
        EXPECT_EQ(execute("Detect"), done());
        EXPECT_EQ(read("PortCount"), cannotRead(kNotAvailable));
        EXPECT_THAT(takeJournal("Brd_getParameter id=3090"), IsEmpty());
        EXPECT_THAT(takeJournal("Ogc_getCameraOnPort"), IsEmpty());
        EXPECT_EQ(execute("CloseCameraConnector"), done());
        OrvoSim_clearScript();
    }
}

}   // namespace

}   // namespace orvo::test

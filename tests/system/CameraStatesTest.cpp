#include <algorithm>

#include "tests/system/CameraTest.h"

namespace orvo::test {

namespace {

const Lines kOfPorts = {"PortIndex", "PortCount"};
const Lines kOfCameras = {"CameraCount", "CameraIndex"};
const Lines kOfACamera = {
    "CameraName",       "CameraFeatureKey",   "CameraStringValue",      "CameraIntValue",
    "CameraFloatValue", "CameraBooleanValue", "CameraEnumerationValue", "CameraCommand",
};
const Lines kOfActionCommands = {
    "EthActionCommand_DeviceKeyLocal",   "EthActionCommand_GroupKeyLocal",
    "EthActionCommand_GroupMaskLocal",   "EthActionCommand_Send",
    "EthActionCommand_DeviceKeyRemote",  "EthActionCommand_GroupKeyRemote",
    "EthActionCommand_GroupMaskRemote",  "EthActionCommand_GroupIndexRemote",
    "EthActionCommand_ApplyGroupRemote",
};

Lines joined(const std::vector<Lines>& groups)
{
    Lines all;
    for (const Lines& group : groups)
        all.insert(all.end(), group.begin(), group.end());
    return all;
}

/// What a host sees of a state: the features that it can use, and the commands that are refused.
struct View {
    std::vector<Lines> offered;
    Lines refused;
};
const Lines kRefusedWithoutCamera = {"InitializeCameraConnector", "StartAcquisition", "StopAcquisition"};
const View kClosed{{}, {"CloseCameraConnector", "Detect", "StartAcquisition", "StopAcquisition"}};
const View kNoPorts{{}, kRefusedWithoutCamera};
const View kNoSuchPort{{kOfPorts}, kRefusedWithoutCamera};
const View kNoCamera{{kOfPorts, kOfCameras}, kRefusedWithoutCamera};   // none, or none of that index
const View kConnected{{kOfPorts, kOfCameras, kOfACamera, kOfActionCommands}, {"InitializeCameraConnector"}};

/// One channel leads the cameras; the other one, of the same board, is looked at.
class CameraStates : public EitherFamily {
protected:
    void expectView(const View& view)
    {
        for (const std::string& command : view.refused)
            EXPECT_EQ(execute(command.c_str()), cannotExecute(kNotAvailable)) << command;
        Lines expected = joined(view.offered);
        if (!isGigE())
            std::erase_if(expected, [](const auto& name) { return name.starts_with("Eth"); });
        EXPECT_EQ(offered(), expected);
    }

    /// The calls at the camera library that the step makes are these and no others.
    void step(const Answer& answer, const View& view, const Lines& calls)
    {
        EXPECT_EQ(answer, done());
        EXPECT_EQ(takeJournal(kCameraCalls), calls);
        expectView(view);
        OrvoSim_clearJournal();
    }

    Lines opening() const
    {
        return {isGigE() ? "Eth_openBoard boardIndex=0 zero=0 -> 0 library=0"
                         : "Ogc_openBoard applet=0 zero=0 -> 0 library=0"};
    }

    /// A search that finds cameras behind both ports; their handles are `first` and the next. The handles of
    /// an earlier one end with it.
    Lines search(int first, int before = 0) const
    {
        Lines lines;
        const auto camera = [](int number) { return "camera=c" + std::to_string(number); };
        if (!isGigE()) {
            lines = {"Ogc_scanPorts library=0 mask=255 bound=5000 zero=0 -> 0",
                     "Ogc_getFoundCount library=0 -> 2"};
            for (int port = 0; port < 2; ++port) {
                lines.push_back("Ogc_getCameraOnPort library=0 port=" + std::to_string(port) + " -> 0 " +
                                camera(first + port));
                lines.push_back("Ogc_getCameraInfo " + camera(first + port) + " -> set");
                lines.push_back("Ogc_connectCamera " + camera(first + port) + " -> 0");
            }
            return lines;
        }
        for (int port = 0; port < 2; ++port) {
            const std::string place = "library=0 port=" + std::to_string(port);
            if (before > 0)
                lines.insert(lines.end(), {"Eth_disconnectCamera " + camera(before + port) + " -> 0",
                                           "Eth_releaseCamera camera=null -> -3012"});
            lines.insert(lines.end(),
                         {"Eth_scanPorts library=0 mask=4294967295 bound=200 -> 0",
                          "Eth_getCameraCount " + place + " -> 1",
                          "Eth_getCameraByIndex " + place + " index=0 -> 0 " + camera(first + port),
                          "Eth_connectCamera " + camera(first + port) + " -> 0"});
        }
        return lines;
    }

    Lines naming(const char* camera) const { return {call("getCameraInfo camera=") + camera + " -> set"}; }

    /// What only the one family asks its library for.
    static Lines ofGigE(const Lines& calls) { return isGigE() ? calls : Lines(); }

    Lines closing(const char* first, const char* second) const
    {
        return joined({ofGigE({std::string("Eth_disconnectCamera camera=") + first + " -> 0",
                               "Eth_releaseCamera camera=null -> -3012",
                               std::string("Eth_disconnectCamera camera=") + second + " -> 0",
                               "Eth_releaseCamera camera=null -> -3012"}),
                       {call("closeBoard library=0 -> 0")}});
    }

private:
    /// A feature that can only be written is asked by a write that is refused either way.
    Lines offered()
    {
        Lines names = joined({kOfPorts, kOfCameras, kOfACamera});
        if (isGigE())
            names = joined({names, kOfActionCommands});
        std::erase_if(names, [&](const std::string& name) {
            Answer answer = host.read(neighbour, name.c_str());
            if (answer == cannotRead("Feature is not readable."))
                answer = host.write(neighbour, name.c_str(), "");
            return answer == cannotRead(kNotAvailable) || answer == cannotWrite(kNotAvailable);
        });
        return names;
    }
};
ORVO_FOR_BOTH_FAMILIES(CameraStates);

TEST_P(CameraStates, LeadTheHostFromStepToStep)
{
    openBoard(GetParam());
    expectView(kClosed);
    step(execute("InitializeCameraConnector"), isGigE() ? kNoCamera : kNoPorts, opening());
    if (isGigE()) {
        step(write("PortIndex", "2"), kNoSuchPort, {});
        step(write("PortIndex", "0"), kNoCamera, {});
    }
    step(execute("Detect"), kConnected, joined({search(1), naming("c1")}));
    EXPECT_EQ(read("PortCount"), gives("2"));
    EXPECT_EQ(read("CameraCount"), gives("1"));
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
    for (const char* nowhere : {"2", "-1"}) {
        step(write("PortIndex", nowhere), kNoSuchPort, {});
        EXPECT_EQ(read("PortIndex"), gives(nowhere));
    }
    step(write("PortIndex", "1"), kConnected, naming("c2"));
    EXPECT_EQ(read("CameraName"), gives("Camera 0-1"));
    step(write("CameraIndex", "1"), kNoCamera, {});
    step(write("CameraIndex", "0"), kConnected, naming("c2"));
    step(execute("StartAcquisition"), kConnected, ofGigE({"Eth_startAcquisition camera=c2 -> 0"}));
    step(execute("StopAcquisition"), kConnected, ofGigE({"Eth_stopAcquisition camera=c2 -> 0"}));
    step(execute("Detect"), kConnected, joined({search(3, 1), naming("c4")}));
    step(execute("CloseCameraConnector"), kClosed, closing("c3", "c4"));

    step(execute("InitializeCameraConnector"), isGigE() ? kNoCamera : kNoPorts, opening());
    step(execute("Detect"), kConnected, joined({search(5), naming("c5")}));   // from the first port again
    EXPECT_EQ(read("PortIndex"), gives("0"));
}

TEST_P(CameraStates, EndWithTheLastChannelOfTheBoard)
{
    openBoard(GetParam());
    connect();
    ASSERT_EQ(host.release(id), done());
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(host.read(neighbour, "CameraName"), gives("Camera 0-0"));
    OrvoSim_clearJournal();
    ASSERT_EQ(host.release(neighbour), done());
    EXPECT_EQ(takeJournal(kCameraCalls), closing("c1", "c2"));
    id = host.opened(0);
    neighbour = host.opened(1);
    expectView(kClosed);
    connect();
    expectView(kConnected);
}

TEST_F(CameraTest, TheLastReleaseLeavesTheCamerasBetweenTheStopAndTheBoards)
{
    std::vector<json> boards = {Machine::grabber(0, kGigEVision.boardType),
                                Machine::grabber(1, kGenICam.boardType)};
    for (json& board : boards) {
        board["cameras"] = std::vector<json>{cameraAt(0)};
        machine.applet(board["index"], Machine::appletOf({Machine::process({Machine::dma()})}));
    }
    machine.boards(boards);
    neighbour = host.opened(0);
    id = host.opened(1);
    for (const int64_t channel : {neighbour, id}) {
        ASSERT_EQ(host.setup(channel, 8, 4), done());
        ASSERT_EQ(host.execute(channel, "InitializeCameraConnector"), done());
        ASSERT_EQ(host.execute(channel, "Detect"), done());
        ASSERT_EQ(host.start(channel), done());
        ASSERT_EQ(host.execute(channel, "StartAcquisition"), done());
    }
    ASSERT_EQ(host.release(neighbour), done());
    OrvoSim_clearJournal();
    ASSERT_EQ(host.release(id), done());
    EXPECT_EQ(
        takeJournal("-Brd_DelMem -Brd_registerApcHandler"),
        (Lines{"Brd_stopAcquireEx board=0 dma=0 head=h1 zero=0 -> 0",
               "Brd_stopAcquireEx board=1 dma=0 head=h2 zero=0 -> 0", "Eth_disconnectCamera camera=c1 -> 0",
               "Eth_releaseCamera camera=null -> -3012", "Eth_closeBoard library=0 -> 0",
               "Ogc_closeBoard library=1 -> 0", "Brd_FreeMemHead board=0 head=h1 -> 0",
               "Brd_FreeGrabber board=0 -> 0", "Brd_FreeMemHead board=1 head=h2 -> 0",
               "Brd_FreeGrabber board=1 -> 0", "Brd_FreeLibraries", "Brd_FreeLibraries"}));
}

}   // namespace

}   // namespace orvo::test

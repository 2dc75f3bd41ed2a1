#include "tests/system/CameraTest.h"
#include "tests/system/Transcript.h"

namespace orvo::test {

namespace {

const Lines kFeatures[] = {
    {"PortIndex", "PortCount"},
    {"CameraCount", "CameraIndex"},
    {"CameraName", "CameraFeatureKey", "CameraStringValue", "CameraIntValue", "CameraFloatValue",
     "CameraBooleanValue", "CameraEnumerationValue", "CameraCommand"},
    {"EthActionCommand_DeviceKeyLocal", "EthActionCommand_GroupKeyLocal", "EthActionCommand_GroupMaskLocal",
     "EthActionCommand_Send", "EthActionCommand_DeviceKeyRemote", "EthActionCommand_GroupKeyRemote",
     "EthActionCommand_GroupMaskRemote", "EthActionCommand_GroupIndexRemote",
     "EthActionCommand_ApplyGroupRemote"},
};

// The commands that a state refuses.
const Lines kClosed = {"CloseCameraConnector", "Detect", "StartAcquisition", "StopAcquisition"};
const Lines kNoCamera = {"InitializeCameraConnector", "StartAcquisition", "StopAcquisition"};
const Lines kConnected = {"InitializeCameraConnector"};

/// One channel works with the cameras; the other one, of the same board, is looked at.
class CameraSession : public EitherFamily {
protected:
    /// Adds what the step called, and what its state offers and refuses.
    void saw(const std::string& title, const Answer& answer, const Lines& refused)
    {
        EXPECT_EQ(answer, done()) << title;
        Lines lines = takeJournal(kCameraCalls);
        for (const Lines& group : kFeatures)
            if (const std::string names = offered(group); !names.empty())
                lines.push_back("offers" + names);
        lines.emplace_back("refuses");
        for (const std::string& command : refused)
            if (execute(command.c_str()) == cannotExecute(kNotAvailable))
                lines.back() += " " + command;
        transcript.add(title, lines);
        OrvoSim_clearJournal();
    }
    void command(const char* name, const Lines& refused) { saw(name, execute(name), refused); }
    void choose(const char* feature, const char* value, const Lines& refused)
    {
        saw(std::string(feature) + " = " + value, write(feature, value), refused);
    }

    Transcript transcript;

private:
    /// Those of the features that are available, with the values that can be read. One that can only be written
    /// is asked by a write that is refused either way.
    std::string offered(const Lines& features)
    {
        std::string names;
        for (const std::string& name : features) {
            Answer answer = host.read(neighbour, name.c_str());
            if (answer == cannotRead("Feature is not readable."))
                answer = host.write(neighbour, name.c_str(), "");
            if (answer.code == AIK_OK)
                names += " " + name + "=" + answer.text;
            else if (answer != cannotRead(kNotAvailable) && answer != cannotWrite(kNotAvailable) &&
                     answer != fails("Cannot find feature with the name: " + name))
                names += " " + name;
        }
        return names;
    }
};
ORVO_FOR_BOTH_FAMILIES(CameraSession);

TEST_P(CameraSession, CallsAndOffersThis)
{
    openBoard(GetParam());
    saw("open two channels", done(), kClosed);
    command("InitializeCameraConnector", kNoCamera);
    if (isGigE()) {   // its ports are known before the search
        choose("PortIndex", "2", kNoCamera);
        choose("PortIndex", "0", kNoCamera);
    }
    command("Detect", kConnected);
    choose("PortIndex", "2", kNoCamera);
    choose("PortIndex", "-1", kNoCamera);
    choose("PortIndex", "1", kConnected);
    choose("CameraIndex", "1", kNoCamera);
    choose("CameraIndex", "0", kConnected);
    command("StartAcquisition", kConnected);
    command("StopAcquisition", kConnected);
    command("Detect", kConnected);
    command("CloseCameraConnector", kClosed);
    command("InitializeCameraConnector", kNoCamera);
    command("Detect", kConnected);

    EXPECT_EQ(host.release(neighbour), done());
    transcript.add("release one of them", takeJournal());
    EXPECT_EQ(read("CameraName"), gives("Camera 0-0"));
    OrvoSim_clearJournal();
    EXPECT_EQ(host.release(id), done());
    transcript.add("release the other", takeJournal(kCameraCalls));
    id = host.opened(0);
    neighbour = host.opened(1);
    saw("open two channels", done(), kClosed);
    EXPECT_TRUE(transcript.isThatOf(std::string("camera-session-") + GetParam().name));
}

}   // namespace

}   // namespace orvo::test

#include "tests/system/CameraTest.h"

namespace orvo::test {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

/// One connected camera; the journal begins after its search.
class CameraValues : public EitherFamily {
protected:
    CameraValues()
    {
        openBoard(GetParam(), {0});
        connect();
    }
};
ORVO_FOR_BOTH_FAMILIES(CameraValues);

TEST_P(CameraValues, GoToTheCameraAndComeBack)
{
    struct Row {
        const char* feature;
        const char* key;
        const char* written;
        const char* type;   // in the names of the library's functions
        const char* sent;
        const char* read;
    };
    const Row rows[] = {
        {"CameraStringValue", "DeviceUserID", "left, upper", "String", R"(text="left, upper")",
         "left, upper"},
        {"CameraStringValue", "DeviceUserID", "", "String", R"(text="")", ""},
        {"CameraEnumerationValue", "TestPattern", "ColorBar", "Enumeration", R"(text="ColorBar")",
         "ColorBar"},
        {"CameraIntValue", "Width", " 640", "Integer", "value=640", "640"},
        {"CameraIntValue", "OffsetX", "12abc", "Integer", "value=12", "12"},
        {"CameraFloatValue", "Gain", "1.23456789 dB", "Float", "value=1.23456789", "1.23457"},
        {"CameraBooleanValue", "ReverseX", "False", "Boolean", "value=1", "True"},
        {"CameraBooleanValue", "ReverseX", "True", "Boolean", "value=0", "False"},
        {"CameraBooleanValue", "ReverseX", "true", "Boolean", "value=1", "True"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(std::string(row.key) + " = " + row.written);
        const std::string setter = call(std::string("set") + row.type + "Value");
        const std::string getter = call(std::string("get") + row.type + "Value");
        const std::string camera = std::string(" camera=c1 name=\"") + row.key + "\"";
        EXPECT_EQ(write(row.feature, row.key, row.written), done());
        EXPECT_EQ(read(row.feature), gives(row.read));
        EXPECT_EQ(read("CameraFeatureKey"), gives(row.key));
        EXPECT_THAT(takeJournal(), ElementsAre(setter + camera + " " + row.sent + " -> 0",
                                               StartsWith(getter + camera + " -> 0 ")));
        OrvoSim_answer(setter.c_str(), 1, -77);
        EXPECT_EQ(write(row.feature, row.written), cannotWrite(libraryError(-77)));
        OrvoSim_answer(getter.c_str(), 1, -78);
        EXPECT_EQ(read(row.feature), cannotRead(libraryError(-78)));
        OrvoSim_clearJournal();
    }
}

TEST_P(CameraValues, ThatAreNoNumbersReachNoLibrary)
{
    for (const char* feature : {"CameraIntValue", "CameraFloatValue"})
        for (const char* text : {"abc", "", " ", "-"})
            EXPECT_EQ(write(feature, "Width", text), cannotWrite("Value cannot be parsed")) << text;
    EXPECT_EQ(write("CameraIntValue", "9223372036854775808"), cannotWrite("Value cannot be parsed"));
    EXPECT_THAT(takeJournal(), IsEmpty());
}

TEST_P(CameraValues, ArriveCutAtTheHostsBuffer)
{
    const std::string text(300, 'x');
    for (const char* type : {"String", "Enumeration"}) {
        const std::string getter = call(std::string("get") + type + "Value");
        const std::string feature = std::string("Camera") + type + "Value";
        OrvoSim_answerWith(getter.c_str(), 1, 0, text.c_str(), text.size() + 1);
        EXPECT_EQ(read(feature.c_str()), gives(text.substr(0, AIK_VALUE_SIZE - 1)));
        OrvoSim_answer(getter.c_str(), 1, 0);   // and no text at all
        EXPECT_EQ(read(feature.c_str()), gives(""));
    }
}

TEST_P(CameraValues, AreCommandsToo)
{
    ASSERT_EQ(write("CameraFeatureKey", "TriggerSoftware"), done());
    EXPECT_EQ(execute("CameraCommand"), done());
    EXPECT_EQ(takeJournal(), Lines{call("executeCommand camera=c1 name=\"TriggerSoftware\" -> 0")});
    OrvoSim_answer(call("executeCommand").c_str(), 1, -79);
    EXPECT_EQ(execute("CameraCommand"), cannotExecute(libraryError(-79)));
    EXPECT_EQ(read("CameraCommand"), cannotRead("Feature is not readable."));
    EXPECT_EQ(write("CameraCommand", "1"), cannotWrite("This function is not implemented."));
    EXPECT_EQ(execute("CameraIntValue"), cannotExecute("This function is not implemented."));
}

TEST_P(CameraValues, KeepTheirKeyWhileTheCameraIsAway)
{
    ASSERT_EQ(write("CameraIntValue", "Width", "320"), done());
    ASSERT_EQ(write("CameraIndex", "1"), done());
    EXPECT_EQ(read("CameraIntValue"), cannotRead(kNotAvailable));
    EXPECT_EQ(write("CameraFeatureKey", "Height"), cannotWrite(kNotAvailable));
    ASSERT_EQ(write("CameraIndex", "0"), done());
    EXPECT_EQ(read("CameraIntValue"), gives("320"));
    ASSERT_EQ(execute("CloseCameraConnector"), done());
    connect();
    EXPECT_EQ(read("CameraFeatureKey"), gives("Width"));
    EXPECT_EQ(host.read(neighbour, "CameraIntValue"), gives("320"));   // one camera, one key
}

/// Two connected GigE Vision cameras, c1 and c2; the journal begins after their search.
class ActionCommands : public CameraTest {
protected:
    ActionCommands()
    {
        openBoard(kGigEVision);
        connect();
    }

    Answer set(const std::string& feature, const char* value)
    {
        return write(("EthActionCommand_" + feature).c_str(), value);
    }
    Answer get(const std::string& feature) { return read(("EthActionCommand_" + feature).c_str()); }
    Answer order(const std::string& command) { return execute(("EthActionCommand_" + command).c_str()); }

    static std::string registerCall(const char* camera, const std::string& name, int value)
    {
        return std::string("Eth_setCameraRegister camera=") + camera + " name=\"" + name +
               "\" value=" + std::to_string(value) + " one=1 -> 0";
    }
};

TEST_F(ActionCommands, AreSentOverTheSelectedPort)
{
    ASSERT_EQ(write("PortIndex", "1"), done());
    OrvoSim_clearJournal();
    EXPECT_EQ(set("DeviceKeyLocal", "4294967295"), done());
    EXPECT_EQ(set("GroupKeyLocal", "2"), done());
    EXPECT_EQ(set("GroupMaskLocal", " 3rd"), done());
    EXPECT_EQ(set("GroupMaskLocal", "third"), cannotWrite("Cannot parse char array to a number value"));
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(order("Send"), done());
    EXPECT_EQ(takeJournal(),
              Lines{"Eth_sendActionCommand library=0 port=1 all=4294967295 deviceKey=4294967295 groupKey=2 "
                    "groupMask=3 -> 0"});
    OrvoSim_answer("Eth_sendActionCommand", 1, -5);
    EXPECT_EQ(order("Send"), cannotExecute("eth error code: -5"));
}

TEST_F(ActionCommands, SetTheRegistersOfTheSelectedCamera)
{
    EXPECT_EQ(set("DeviceKeyRemote", "4"), done());
    EXPECT_EQ(set("GroupKeyRemote", "5"), done());
    EXPECT_EQ(set("GroupMaskRemote", "6"), done());
    EXPECT_EQ(takeJournal(), Lines(3, registerCall("c1", "actionDeviceKey", 4)));
    EXPECT_EQ(set("GroupIndexRemote", "12"), done());
    EXPECT_EQ(takeJournal(), Lines());
    EXPECT_EQ(order("ApplyGroupRemote"), done());
    EXPECT_EQ(takeJournal(),
              (Lines{registerCall("c1", "actionGroupKey12", 5), registerCall("c1", "actionGroupMask12", 6)}));

    ASSERT_EQ(write("PortIndex", "1"), done());   // nothing is written by itself
    ASSERT_EQ(execute("Detect"), done());
    EXPECT_EQ(takeJournal("Eth_setCameraRegister"), Lines());
    EXPECT_EQ(order("ApplyGroupRemote"), done());
    EXPECT_EQ(takeJournal(),
              (Lines{registerCall("c4", "actionGroupKey12", 5), registerCall("c4", "actionGroupMask12", 6)}));
}

TEST_F(ActionCommands, StopAtARefusedRegister)
{
    OrvoSim_answer("Eth_setCameraRegister", 2, -5);
    EXPECT_EQ(set("DeviceKeyRemote", "7"), done());
    EXPECT_EQ(set("GroupKeyRemote", "8"), cannotWrite("eth error code: -5"));
    EXPECT_EQ(get("GroupKeyRemote"), gives("8"));
    OrvoSim_clearJournal();
    for (const char* name : {"actionGroupKey0", "actionGroupMask0"}) {
        OrvoSim_answer((std::string("Eth_setCameraRegister name=\"") + name + "\"").c_str(), 1, -6);
        EXPECT_EQ(order("ApplyGroupRemote"), cannotExecute("eth error code: -6"));
    }
    EXPECT_EQ(takeJournal().size(), 3u);   // the mask isn't tried after the key
}

TEST_F(ActionCommands, ForgetACameraThatAFailedSearchLosesAndNoOther)
{
    for (const auto& [port, call] : {std::pair("0", "camera=null"), {"1", "camera=c6"}}) {
        EXPECT_EQ(execute("Detect"), done());
        EXPECT_EQ(write("PortIndex", port), done());
        OrvoSim_answer("Eth_scanPorts", 1, -7);
        EXPECT_EQ(execute("Detect"), cannotExecute("eth error code: -7"));   // port 0 is lost, and no other
        OrvoSim_clearJournal();
        set("DeviceKeyRemote", "4");
        EXPECT_THAT(takeJournal("Eth_setCameraRegister"), testing::ElementsAre(testing::HasSubstr(call)));
    }
    EXPECT_EQ(order("Send"), done());
}

}   // namespace

}   // namespace orvo::test

#include "tests/system/CameraTest.h"

namespace orvo::test {

namespace {

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

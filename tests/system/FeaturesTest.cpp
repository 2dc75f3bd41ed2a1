#include "tests/system/SystemTest.h"

namespace orvo::test {

namespace {

using Features = OneChannel;

// All features of a channel of a GigE Vision board in their order: name, type, what may ever be done with it
// ("r" to read, "w" to write), description.
const Lines kFeatures = {
    "BrdFeatureKey [6 rw] Parameter name to access the brdlib.",
    "BrdStringValue [6 rw] Access string parameter of the brdlib.",
    "BrdIntValue [2 rw] Access integer parameter of the brdlib.",
    "BrdFloatValue [3 rw] Access float parameter of the brdlib.",
    "BufferCount [2 rw] Number of buffers on this stream.",
    "FrameCountSinceLastStart [2 r] Frame counter",
    "TimestampFrequency [2 r] This is the frequency of the timestamps that are assigned to every image.",
    "AcquisitionStrategy [1 rw] Available buffer handling modes of this Data Stream.",
    "Transformation [1 rw] Pixel transformation on the CPU.",
    ("InitializeCameraConnector [4 -] This function must be called prior to any other function call to the "
     "connector."),
    ("CloseCameraConnector [4 -] This function must be called after no function of the connector is needed "
     "anymore."),
    "Detect [4 -] This function detects cameras.",
    "StartAcquisition [4 -] This function starts the acquisition on the camera.",
    "StopAcquisition [4 -] This function stops the acquisition on the camera.",
    "CameraCount [2 r] Number of the detected/connected cameras on the selected port.",
    "CameraIndex [2 rw] Selects a camera for further actions.",
    "CameraName [6 r] Name of the selected camera.",
    "PortIndex [2 rw] Selects a port for further actions.",
    "PortCount [2 r] Number of the available ports.",
    "CameraFeatureKey [6 rw] Parameter name for future access.",
    "CameraStringValue [6 rw] This feature is for string parameter access.",
    "CameraIntValue [2 rw] This feature is for int parameter access.",
    "CameraFloatValue [3 rw] This feature is for float parameter access.",
    "CameraBooleanValue [5 rw] This feature is for bool parameter access.",
    "CameraEnumerationValue [6 rw] This feature is for enum parameter access.",
    "CameraCommand [4 w] This feature is for command access.",
    "EthActionCommand_DeviceKeyLocal [2 rw] Device Key of the command",
    "EthActionCommand_GroupKeyLocal [2 rw] Group Key of the command",
    "EthActionCommand_GroupMaskLocal [2 rw] Group Mask of the command",
    "EthActionCommand_Send [4 rw] Sends an ACTION command over selected port",
    "EthActionCommand_DeviceKeyRemote [2 rw] Device Key of the command",
    "EthActionCommand_GroupKeyRemote [2 rw] Group Key of the command",
    "EthActionCommand_GroupMaskRemote [2 rw] Group Mask of the command",
    "EthActionCommand_GroupIndexRemote [2 rw] Group index of the command",
    "EthActionCommand_ApplyGroupRemote [4 rw] Applies the group configuration for the remote device.",
    ("CogAdapterInterfaceID [6 r] This feature returns the ID of the aik.hinterface file used when the "
     "adapter was build."),
    "CogAdapterVersion [6 r] The version of the adapter DLL.",
};

TEST_F(SystemTest, AChannelHasTheseFeaturesInThisOrder)
{
    machine.boards({Machine::grabber(0, 2897), Machine::grabber(1, 1872)});
    for (const int board : {0, 1})
        machine.applet(board, Machine::appletOf({Machine::process({Machine::dma()})}));
    const auto listed = [&](int64_t id) {
        Lines all;
        for (Answer name; (name = host.featureName(id, static_cast<uint32_t>(all.size()))).code == AIK_OK;) {
            const char* const feature = name.text.c_str();
            const auto flag = [&](uint32_t attribute, const char* letter) {
                return host.attribute(id, feature, attribute) == gives("True") ? letter : "";
            };
            const std::string access =
                std::string(flag(AIK_ATTR_READABLE, "r")) + flag(AIK_ATTR_WRITEABLE, "w");
            all.push_back(name.text + " [" + host.featureType(id, feature).text + " " +
                          (access.empty() ? "-" : access) + "] " +
                          host.attribute(id, feature, AIK_ATTR_DESCRIPTION).text);
        }
        return all;
    };
    EXPECT_EQ(listed(host.opened(0)), kFeatures);
    Lines ofTheOtherFamily = kFeatures;
    std::erase_if(ofTheOtherFamily, [](const auto& row) { return row.starts_with("EthActionCommand_"); });
    EXPECT_EQ(listed(host.opened(1)), ofTheOtherFamily);
}

TEST_F(Features, AreFoundByExactNameAndCountedFromZero)
{
    EXPECT_EQ(host.featureName(id, static_cast<uint32_t>(kFeatures.size()) - 1), gives("CogAdapterVersion"));
    EXPECT_EQ(host.featureName(id, static_cast<uint32_t>(kFeatures.size())),
              fails("Cannot find feature with the given index"));
    EXPECT_EQ(host.attribute(id, "BufferCount", AIK_ATTR_EMPTY), gives(""));
    EXPECT_EQ(host.attribute(id, "BufferCount", 5), fails("Attribute type is unknown."));

    const auto unknown = fails("Cannot find feature with the name: bufferCount");
    EXPECT_EQ(host.read(id, "bufferCount"), unknown);
    EXPECT_EQ(host.write(id, "bufferCount", "1"), unknown);
    EXPECT_EQ(host.execute(id, "bufferCount"), unknown);
    EXPECT_EQ(host.featureType(id, "bufferCount"), unknown);
    EXPECT_EQ(host.attribute(id, "bufferCount", 0), unknown);   // found before the code is looked at
    EXPECT_EQ(host.validEnum(id, "bufferCount", 0), unknown);
}

TEST_F(Features, RefuseWithTheirOwnTextWrappedOrBare)
{
    EXPECT_EQ(host.write(id, "FrameCountSinceLastStart", "1"),
              fails("Feature could not be written. (Feature is not writeable.)"));
    EXPECT_EQ(host.read(id, "CogAdapterVersion"),
              fails("Feature could not be read. (Feature is not available.)"));
    EXPECT_EQ(host.execute(id, "CogAdapterVersion"),
              fails("Command could not be executed. (Feature is not available.)"));
    EXPECT_EQ(host.execute(id, "BufferCount"), fails("Execute function is not implemented for int feature."));
    EXPECT_EQ(host.execute(id, "Transformation"),
              fails("Execute function is not implemented for enum feature."));
    EXPECT_EQ(host.validEnum(id, "BufferCount", 0), fails("Feature is not a valid enum type."));

    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    EXPECT_EQ(adapter.readValue(errstr.data(), id, "CogAdapterVersion", nullptr), AIK_FAILED);
    EXPECT_STREQ(errstr.data(), "Feature could not be read. (Val is an invalid pointer)");
}

TEST_F(Features, TakeNumbersByTheRulesOfAStream)
{
    EXPECT_EQ(host.write(id, "BufferCount", " 7 buffers"), done());
    EXPECT_EQ(host.read(id, "BufferCount"), gives("7"));
    const auto unparsable =
        fails("Feature could not be written. (Cannot parse char array to a number value)");
    EXPECT_EQ(host.write(id, "BufferCount", "seven"), unparsable);
    EXPECT_EQ(host.write(id, "BufferCount", ""), unparsable);
    EXPECT_EQ(host.write(id, "BufferCount", "99999999999999999999999"), unparsable);
    EXPECT_EQ(host.read(id, "BufferCount"), gives("7"));
}

TEST_F(Features, ListTheirEntriesByValue)
{
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 0), gives("NewestOnly"));
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 1), gives("OldestFirstOverwrite"));
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 2), gives("OldestFirst"));
    EXPECT_EQ(host.validEnum(id, "AcquisitionStrategy", 3), fails("Invalid enum index!"));
    EXPECT_EQ(host.validEnum(id, "Transformation", 0), gives("NoTransformation"));
    EXPECT_EQ(host.validEnum(id, "Transformation", 1), gives("RGB8PackedToPlanar"));
    EXPECT_EQ(host.write(id, "AcquisitionStrategy", "newestonly"), fails("Invalid enum key!"));
    EXPECT_EQ(host.read(id, "AcquisitionStrategy"), gives("OldestFirstOverwrite"));

    Canaries value(AIK_ENUM_SIZE);   // no NUL follows the name
    std::array<char, AIK_ERRSTR_SIZE> errstr{};
    ASSERT_EQ(adapter.getValidEnum(errstr.data(), id, "AcquisitionStrategy", 0, value.text()), AIK_OK);
    EXPECT_TRUE(value.isUntouchedFrom(std::string("NewestOnly").size()));
}

TEST_F(SystemTest, APortWithoutAFrequencyHasTwoFeaturesOnly)
{
    OrvoSim_answer("Brd_getSystemInformation code=100", 1, -43);
    OrvoSim_answerWith("Brd_getSystemInformation code=100", 2, 0, "fast", 5);
    machine.oneBoard({{"dmas", 2}});
    const auto unknown = fails("Cannot find feature with the name: TimestampFrequency");
    EXPECT_EQ(host.read(host.opened(0), "TimestampFrequency"), unknown);
    EXPECT_EQ(host.read(host.opened(1), "TimestampFrequency"), unknown);
    EXPECT_EQ(host.read(1, "BufferCount"), gives("5"));
}

}   // namespace

}   // namespace orvo::test

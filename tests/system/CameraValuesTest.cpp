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

}   // namespace

}   // namespace orvo::test

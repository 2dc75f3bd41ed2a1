#include <fstream>
#include <numeric>

#include "aikctl/pictures/Picture.h"
#include "tests/aikctl/AikctlTest.h"
#include "tests/aikctl/decodePng.h"

namespace orvo::aikctl {
namespace {

using nlohmann::json;

constexpr size_t kPixels = size_t{16} * 12;   // of every picture here

class Grab : public AikctlTest {
protected:
    // A small picture in which no two samples that could be mixed up are the same.
    Picture putPhotoInto(const std::string& name) const
    {
        Picture photo{16, 12, 3, std::vector<uint8_t>(kPixels * 3)};
        for (size_t sample = 0; sample < photo.bytes.size(); ++sample)
            photo.bytes[sample] = static_cast<uint8_t>(sample * 7 % 251);
        const auto bytes = encodePng(photo);
        std::filesystem::create_directories(folder() / name);
        std::ofstream((folder() / name / "photo.png").string(), std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return photo;
    }

    Picture saved(const std::string& name) const
    {
        return decodePng(readBytes((pictures() / name).string()));
    }

    static json port(int format) { return {{"format", format}, {"width", 16}, {"height", 12}}; }
    static json sixFormats()
    {
        const json ports = {port(1), port(2), port(3), port(4), port(5), port(6)};
        return {{"picturesPerSecond", 1000}, {"processes", {{{"dmas", ports}}}}};
    }
};

TEST_F(Grab, SavesWhatTheBoardSaw)
{
    const Picture photo = putPhotoInto("photos");
    json photos = port(2);
    photos["source"] = {{"folder", "photos"}};
    for (const int format : {2, 4, 6}) {
        photos["format"] = format;
        applet(0, photos);
        ASSERT_EQ(grab({"0", "--count", "2", "--overwrite", "--set", "PixelFormat=RGB8"}).exitCode, 0);
        EXPECT_EQ(saved("channel0-000002.png"), photo) << format;
    }
    photos["format"] = 2;
    applet(0, photos);
    ASSERT_EQ(grab({"0", "--count", "2", "--overwrite", "--set", "PixelFormat=RGB8", "--planar"}).exitCode,
              0);
    EXPECT_EQ(saved("channel0-000002.png"), photo);
}

TEST_F(Grab, SavesRawWhatNoPngCanShow)
{
    applet(0, sixFormats());
    noApplet(1);
    const Outcome packed = grab({"0", "1", "2", "3", "4", "5", "-n", "1"});
    EXPECT_EQ(packed.exitCode, 0) << packed.err;
    EXPECT_EQ(savedFiles(), (std::vector<std::string>{"channel0-000001.png", "channel1-000001.png",
                                                      "channel2-000001.png", "channel3-000001.png",
                                                      "channel4-000001.raw", "channel5-000001.png"}));
    EXPECT_NE(packed.err.find("channel 4: saved raw, for no PNG can show this: 5 bytes a pixel (code -1)"),
              std::string::npos);
    EXPECT_EQ(std::filesystem::file_size(pictures() / "channel4-000001.raw"), kPixels * 5);

    std::filesystem::remove_all(pictures());
    const Outcome planar = grab({"0", "1", "2", "3", "4", "5", "-n", "1", "--planar"});
    EXPECT_EQ(planar.exitCode, 0) << planar.err;
    EXPECT_EQ(savedFiles(), (std::vector<std::string>{"channel0-000001.raw", "channel1-000001.png",
                                                      "channel2-000001.raw", "channel3-000001.raw",
                                                      "channel4-000001.raw", "channel5-000001.png"}));
    const Picture planes = saved("channel5-000001.png");
    EXPECT_EQ(std::make_pair(planes.width, planes.height), std::make_pair(32U, 36U));
}

TEST_F(Grab, KeepsEveryByteOfARawPicture)
{
    applet(0, sixFormats());
    noApplet(1);
    ASSERT_EQ(grab({"0", "1", "2", "3", "4", "5", "-n", "2", "--raw"}).exitCode, 0);
    const size_t bytesPerPixel[] = {2, 3, 1, 4, 5, 6};
    for (size_t channel = 0; channel < 6; ++channel)
        EXPECT_EQ(
            std::filesystem::file_size(pictures() / ("channel" + std::to_string(channel) + "-000002.raw")),
            kPixels * bytesPerPixel[channel]);
}

TEST_F(Grab, TellsHowItWent)
{
    applet(0, sixFormats());
    noApplet(1);
    const Outcome table = grab({"2", "1", "2", "--count", "3"});
    EXPECT_NE(table.out.find("\n1        16 x 12  colour, 8 bits (code 7)"), std::string::npos) << table.out;
    EXPECT_NE(table.out.find("saved 6 pictures in " + pictures().string()), std::string::npos) << table.out;

    const json report = grab({"2", "--count", "3", "--json", "--overwrite"}).json();
    EXPECT_EQ(report["interrupted"], false);
    ASSERT_EQ(report["channels"].size(), 1U);
    EXPECT_EQ(report["channels"][0]["channel"], 2);
    EXPECT_EQ(report["channels"][0]["pictures"], 3);
    EXPECT_EQ(report["channels"][0]["format"], "grey, 8 bits (code 0)");
    EXPECT_GT(report["channels"][0]["picturesPerSecond"], 0.0);
    EXPECT_TRUE(report["channels"][0]["timestamps"].empty());
}

TEST_F(Grab, LeadsTheCamerasOfABoardOnce)
{
    applet(0, {{"width", 16}, {"height", 12}});
    const Outcome grabbed = grab({"0", "1", "--count", "2"});
    EXPECT_EQ(grabbed.exitCode, 0) << grabbed.err;
    const auto calls = journal("Eth_openBoard Eth_startAcquisition Eth_stopAcquisition Eth_closeBoard "
                               "Brd_AcquireEx Brd_stopAcquireEx");
    const std::vector<std::string> order = {
        "Eth_openBoard",        "Brd_AcquireEx",       "Brd_AcquireEx",       "Eth_startAcquisition",
        "Eth_startAcquisition", "Eth_stopAcquisition", "Eth_stopAcquisition", "Brd_stopAcquireEx",
        "Brd_stopAcquireEx",    "Eth_closeBoard"};
    ASSERT_EQ(calls.size(), order.size());
    for (size_t i = 0; i < order.size(); ++i)
        EXPECT_TRUE(calls[i].starts_with(order[i])) << calls[i];
}

TEST_F(Grab, LeavesCamerasAloneIfAsked)
{
    applet(0, {{"width", 16}, {"height", 12}});
    const Outcome grabbed = grab({"0", "--no-camera", "--timeout", "0.05"});
    EXPECT_EQ(grabbed.exitCode, 1);
    EXPECT_NE(grabbed.err.find("channel 0: No picture came in time"), std::string::npos);
    EXPECT_TRUE(savedFiles().empty());   // a GigE Vision camera wants to be started
    EXPECT_TRUE(journal("Eth_*").empty());
}

TEST_F(Grab, SetsParametersOfWhateverKind)
{
    applet(0, {{"width", 16}, {"height", 12}});
    const auto set = {"Gain=6", "Width=800", "ReverseX=True", "TestPattern=GreyHorizontalRamp"};
    std::vector<std::string> arguments = {"0", "--count", "1"};
    for (const char* value : set)
        arguments.insert(arguments.end(), {"--set", value});
    EXPECT_EQ(grab(arguments).exitCode, 0);
    for (const char* call : {"Eth_setFloatValue camera=c1 name=\"Gain\" value=6 -> 0",
                             "Eth_setIntegerValue camera=c1 name=\"Width\" value=800 -> 0",
                             "Eth_setBooleanValue camera=c1 name=\"ReverseX\" value=1 -> 0"})
        EXPECT_EQ(std::ranges::count(journal("Eth_set*"), std::string(call)), 1) << call;
    const Picture ramp = saved("channel0-000001.png");
    EXPECT_GT(ramp.bytes.front(), ramp.bytes.back());   // mirrored

    for (const char* nonsense : {"Gain=much", "Gain=99", "Grain=1", "ReverseX=yes"}) {
        const Outcome refused = grab({"0", "--count", "1", "--overwrite", "--set", nonsense});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_NE(refused.err.find(std::string("port 0: ") + nonsense), std::string::npos) << refused.err;
    }
}

TEST_F(Grab, TakesPicturesAtOneMomentByActionCommands)
{
    applet(0, {{"width", 16}, {"height", 12}});
    applet(1, {{"width", 16}, {"height", 12}});
    const json channels = grab({"0", "1", "--action", "--count", "3", "--json"}).json()["channels"];
    EXPECT_EQ(channels[0]["timestamps"].size(), 3U);
    EXPECT_EQ(channels[0]["timestamps"], channels[1]["timestamps"]);
    EXPECT_EQ(journal("Eth_sendActionCommand").size(), 3U);

    const Outcome table = grab({"0", "1", "--action", "--count", "2", "--overwrite"});
    EXPECT_NE(table.out.find("2 of 2 action commands made pictures of one time stamp on all channels (2)"),
              std::string::npos)
        << table.out;
    const Outcome unable = grab({"2", "--action", "--count", "1", "--overwrite", "--timeout", "0.05"});
    EXPECT_EQ(unable.exitCode, 1);
    EXPECT_NE(unable.err.find("cameras of this board know no action commands"), std::string::npos);
}

TEST_F(Grab, CountsWhatWasLostUnderOldestFirst)
{
    applet(0, port(3));
    OrvoSim_answer("Brd_getStatusEx code=30", 4, 12);
    const Outcome grabbed = grab({"0", "--strategy", "oldestfirst", "--json"});
    EXPECT_EQ(grabbed.exitCode, 1);
    EXPECT_NE(grabbed.err.find("channel 0: 12 images lost due buffer overflow"), std::string::npos);
    EXPECT_GE(grabbed.json()["channels"][0]["lost"], 12);
    EXPECT_LT(grabbed.json()["channels"][0]["pictures"], 10);
}

TEST_F(Grab, GoesOnBesideAFailedChannel)
{
    applet(1, port(3));
    const Outcome grabbed = grab({"--count", "2"});
    EXPECT_EQ(grabbed.exitCode, 1);
    EXPECT_NE(grabbed.err.find("channel 0: ORVO_COGNEX_APPLET_0 is not a valid environment variable."),
              std::string::npos);
    EXPECT_EQ(savedFiles(), (std::vector<std::string>{"channel1-000001.png", "channel1-000002.png"}));
}

TEST_F(Grab, SaysInTheAdaptersWordsWhatFailed)
{
    applet(0, port(3));
    const std::pair<const char*, const char*> faults[] = {
        {"Brd_setParameter id=100", "Cannot set BRD_WIDTH"},
        {"Brd_AddMem", "brd error code: -5"},
        {"Brd_AcquireEx", "brd error code: -5"},
        {"Brd_stopAcquireEx", "brd error code: -5"},
    };
    for (const auto& [call, text] : faults) {
        OrvoSim_clearScript();
        OrvoSim_answer(call, 1, -5);
        const Outcome grabbed = grab({"0", "--count", "1", "--overwrite"});
        EXPECT_EQ(grabbed.exitCode, 1) << call;
        EXPECT_NE(grabbed.err.find(std::string("channel 0: ") + text), std::string::npos) << grabbed.err;
    }
}

TEST_F(Grab, EndsInOrderWhenInterrupted)
{
    applet(0, sixFormats());
    noApplet(1);
    m_isInterrupted = [this] { return std::filesystem::exists(pictures() / "channel2-000002.png"); };
    const Outcome grabbed = grab({"2", "1", "--count", "1000000"});
    EXPECT_EQ(grabbed.exitCode, 130);
    EXPECT_NE(grabbed.out.find("interrupted; saved " + std::to_string(savedFiles().size()) + " pictures"),
              std::string::npos);
    for (const std::string& name : savedFiles())
        EXPECT_EQ(saved(name).width, 16U) << name;
}

TEST_F(Grab, RefusesBeforeItOpensAnything)
{
    std::filesystem::create_directories(pictures());
    const std::ofstream older(pictures() / "channel7-000001.raw");
    EXPECT_EQ(grab({}).exitCode, 1);
    EXPECT_EQ(OrvoSim_countJournal(), 0U);
}

TEST_F(Grab, RefusesChannelsThatAreNotThere)
{
    EXPECT_NE(grab({"2"}).err.find("There is no channel 2: the last one is 1"), std::string::npos);
    noBoards();
    EXPECT_NE(grab({}).err.find("There is no channel: the adapter found no board"), std::string::npos);
}

}   // namespace
}   // namespace orvo::aikctl

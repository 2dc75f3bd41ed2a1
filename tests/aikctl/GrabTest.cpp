#include <fstream>

#include "tests/aikctl/AikctlTest.h"
#include "tests/aikctl/decodePng.h"

namespace orvo::aikctl {
namespace {

namespace fs = std::filesystem;

constexpr uint32_t kWidth = 16;
constexpr uint32_t kHeight = 11;
constexpr size_t kPixels =
    size_t{kWidth} * kHeight;   // no multiple of 3: a split by threes leaves bytes over

class Grab : public AikctlTest {
protected:
    // Puts a picture of 16 bits a sample where a board can play it, and returns what a PNG keeps of it. No two
    // samples that could be mixed up are equal, nor are the two bytes of one.
    Picture putPhoto(const std::string& name, uint32_t samples)
    {
        Picture seen{kWidth, kHeight, samples, {}};
        std::string content = (samples == 3 ? "P6 " : "P5 ") + std::to_string(kWidth) + " " +
                              std::to_string(kHeight) + " 65535\n";
        for (size_t sample = 0; sample < kPixels * samples; ++sample) {
            const auto upper = static_cast<uint8_t>(sample * 7 % 251);
            seen.bytes.push_back(upper);
            content += {static_cast<char>(upper), static_cast<char>(255 - upper)};
        }
        m_machine.file(name + "/photo.ppm", content);
        return seen;
    }

    Picture saved(const std::string& name) const { return decodePng(pictures() / name); }
    Picture saved(int channel) const { return saved("channel" + std::to_string(channel) + "-000001.png"); }
    uintmax_t rawSize(int channel) const
    {
        return fs::file_size(pictures() / ("channel" + std::to_string(channel) + "-000001.raw"));
    }

    static json port(int format) { return {{"format", format}, {"width", kWidth}, {"height", kHeight}}; }
};

TEST_F(Grab, SavesEveryFormatAsTheBoardSawIt)
{
    const Picture grey = putPhoto("grey", 1);
    const Picture colour = putPhoto("colour", 3);
    json ports;
    for (const int format : {1, 2, 3, 4, 5, 6}) {
        ports.push_back(port(format));
        ports.back()["source"] = {{"folder", format == 1 || format == 3 ? "grey" : "colour"}};
    }
    m_machine.boards({test::Machine::grabber(0)});   // without a camera
    applet(0, {{"picturesPerSecond", 1000}, {"processes", {{{"dmas", ports}}}}});

    const Outcome packed = grab({"--count", "1"});
    EXPECT_EQ(packed.exitCode, 0) << packed.err;
    for (const int channel : {0, 2})
        EXPECT_EQ(saved(channel), grey) << channel;
    for (const int channel : {1, 3, 5})
        EXPECT_EQ(saved(channel), colour) << channel;
    EXPECT_EQ(rawSize(4), kPixels * 5);
    EXPECT_THAT(packed.err,
                HasSubstr("channel 4: saved raw, for no PNG can show this: 5 bytes a pixel (code -1)"));
    EXPECT_THAT(packed.out, HasSubstr("\n1        16 x 11  colour, 8 bits (code 7) "));
    EXPECT_THAT(packed.out, HasSubstr("saved 6 pictures in " + pictures().string()));

    fs::remove_all(pictures());
    const Outcome planar = grab({"--count", "1", "--planar"});
    EXPECT_EQ(planar.exitCode, 0) << planar.err;
    EXPECT_EQ(saved(1), colour);
    const Picture planes = saved(5);
    EXPECT_EQ(std::make_pair(planes.width, planes.height), std::make_pair(2 * kWidth, 3 * kHeight));
    EXPECT_EQ(planes.bytes[0], 255 - colour.bytes[1]);   // the lower byte of the first pixel's green,
    EXPECT_EQ(planes.bytes[1], colour.bytes[0]);         // and the upper byte of its red
    for (const auto& [channel, bytesPerPixel] : {std::pair(0, 2U), {2, 1U}, {3, 4U}, {4, 5U}})
        EXPECT_EQ(rawSize(channel), kPixels * bytesPerPixel / 3 * 3) << channel;
    EXPECT_THAT(planar.err, HasSubstr("1 byte a pixel, split by threes (code 0)"));

    fs::remove_all(pictures());
    EXPECT_EQ(grab({"--count", "1", "--raw"}).err, "");
    for (const auto& [channel, bytesPerPixel] :
         {std::pair(0, 2U), {1, 3U}, {2, 1U}, {3, 4U}, {4, 5U}, {5, 6U}})
        EXPECT_EQ(rawSize(channel), kPixels * bytesPerPixel) << channel;
}

TEST_F(Grab, ReportsToPrograms)
{
    applet(0, port(3));
    applet(1, port(2));
    const json report = json::parse(grab({"1", "0", "1", "--count", "3", "--json"}).out);
    EXPECT_EQ(report["folder"], pictures().string());
    EXPECT_EQ(report["interrupted"], false);
    ASSERT_EQ(report["channels"].size(), 2U);
    const json& channel = report["channels"][0];
    EXPECT_EQ(channel["channel"], 0);
    EXPECT_EQ(channel["pictures"], 3);
    EXPECT_EQ(channel["format"], "grey, 8 bits (code 0)");
    EXPECT_GT(channel["picturesPerSecond"], 0.0);
    EXPECT_TRUE(channel["timestamps"].empty());
    EXPECT_EQ(savedFiles().size(), 6U);
}

TEST_F(Grab, StartsTheCamerasOfABoardOnceUnlessToldNotTo)
{
    applet(0, {{"width", kWidth}, {"height", kHeight}});
    const Outcome unfed = grab({"0", "--no-camera", "--timeout", "0.05"});
    EXPECT_EQ(unfed.exitCode, 1);
    EXPECT_THAT(unfed.err, HasSubstr("channel 0: No picture came in time"));
    EXPECT_TRUE(savedFiles().empty());   // a GigE Vision camera sends only once it is started
    EXPECT_TRUE(journal("Eth_*").empty());

    OrvoSim_clearJournal();
    const Outcome fed = grab({"0", "1", "--count", "2"});
    EXPECT_EQ(fed.exitCode, 0) << fed.err;
    std::string order;
    for (const std::string& call :
         journal("Eth_openBoard Eth_startAcquisition Eth_stopAcquisition Eth_closeBoard "
                 "Brd_AcquireEx Brd_stopAcquireEx"))
        order += call.substr(0, call.find(' ')) + " ";
    EXPECT_EQ(order,
              "Eth_openBoard Brd_AcquireEx Brd_AcquireEx Eth_startAcquisition Eth_startAcquisition "
              "Eth_stopAcquisition Eth_stopAcquisition Brd_stopAcquireEx Brd_stopAcquireEx Eth_closeBoard ");
}

TEST_F(Grab, SetsParametersOfAnyKind)
{
    applet(0, {{"width", kWidth}, {"height", kHeight}});
    std::vector<std::string> arguments = {"0", "--count", "1"};
    for (const char* value : {"Gain=6", "Width=800", "ReverseX=True", "TestPattern=GreyHorizontalRamp"})
        arguments.insert(arguments.end(), {"--set", value});
    EXPECT_EQ(grab(arguments).exitCode, 0);
    EXPECT_THAT(journal("Eth_set*"),
                testing::IsSupersetOf({"Eth_setFloatValue camera=c1 name=\"Gain\" value=6 -> 0",
                                       "Eth_setIntegerValue camera=c1 name=\"Width\" value=800 -> 0",
                                       "Eth_setBooleanValue camera=c1 name=\"ReverseX\" value=1 -> 0"}));
    const Picture ramp = saved(0);
    EXPECT_GT(ramp.bytes.front(), ramp.bytes.back());   // mirrored

    for (const char* nonsense : {"Gain=much", "Gain=99", "Grain=1", "ReverseX=yes"}) {
        const Outcome refused = grab({"0", "--count", "1", "--overwrite", "--set", nonsense});
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.err, HasSubstr(std::string("port 0: ") + nonsense));
    }
}

TEST_F(Grab, TakesPicturesAtTheSameMomentByActionCommands)
{
    applet(0, {{"width", kWidth}, {"height", kHeight}});
    applet(1, port(2));
    const json channels = json::parse(grab({"0", "1", "--action", "--count", "3", "--json"}).out)["channels"];
    EXPECT_EQ(channels[0]["timestamps"].size(), 3U);
    EXPECT_EQ(channels[0]["timestamps"], channels[1]["timestamps"]);
    EXPECT_EQ(journal("Eth_sendActionCommand").size(), 3U);

    EXPECT_THAT(grab({"0", "1", "--action", "--count", "2", "--overwrite"}).out,
                HasSubstr("2 of 2 action commands made pictures of one time stamp on all channels (2)"));
    const Outcome unable = grab({"2", "--action", "--count", "1", "--overwrite", "--timeout", "0.05"});
    EXPECT_EQ(unable.exitCode, 1);
    EXPECT_THAT(unable.err, HasSubstr("cameras of this board know no action commands"));
}

TEST_F(Grab, CountsWhatTheBoardLostUnderOldestFirst)
{
    applet(0, port(3));
    OrvoSim_answer("Brd_getStatusEx code=30", 4, 12);
    const Outcome grabbed = grab({"0", "--strategy", "oldestfirst", "--json"});
    EXPECT_EQ(grabbed.exitCode, 1);
    EXPECT_THAT(grabbed.err, HasSubstr("channel 0: 12 images lost due buffer overflow"));
    const json channel = json::parse(grabbed.out)["channels"][0];
    EXPECT_GE(channel["lost"], 12);
    EXPECT_LT(channel["pictures"], 10);
}

TEST_F(Grab, GoesOnWithOtherChannelsWhenOneFails)
{
    applet(0, {{"width", kWidth}, {"height", kHeight}, {"processes", {{{"dmas", 1}}}}});
    applet(1, port(2));
    const auto expectOneFailure = [this](const std::string& text) {
        const Outcome grabbed = grab({"--count", "1", "--overwrite", "--json"});
        EXPECT_EQ(grabbed.exitCode, 1) << text;
        EXPECT_EQ(grabbed.err, "aikctl: channel 0: " + text + "\n");
        EXPECT_EQ(json::parse(grabbed.out)["channels"][1]["pictures"], 1) << text;
    };
    for (const auto& [call, text] : {std::pair("Brd_setParameter id=100", "Cannot set BRD_WIDTH"),
                                     {"Brd_AddMem", "brd error code: -5"},
                                     {"Brd_AcquireEx", "brd error code: -5"},
                                     {"Brd_stopAcquireEx", "brd error code: -5"}}) {
        OrvoSim_clearScript();
        OrvoSim_answer(call, 1, -5);
        expectOneFailure(text);
    }
    noApplet(0);
    expectOneFailure("ORVO_COGNEX_APPLET_0 is not a valid environment variable.");
}

TEST_F(Grab, EndsInOrderWhenInterrupted)
{
    applet(0, port(3));
    applet(1, port(2));
    m_isInterrupted = [this] { return fs::exists(pictures() / "channel0-000002.png"); };
    const Outcome grabbed = grab({"0", "1", "--count", "1000000"});
    EXPECT_EQ(grabbed.exitCode, 130);
    EXPECT_THAT(grabbed.out,
                HasSubstr("interrupted; saved " + std::to_string(savedFiles().size()) + " pictures"));
    for (const std::string& name : savedFiles())
        EXPECT_EQ(saved(name).width, kWidth) << name;
}

TEST_F(Grab, KeepsOlderPicturesAndLeavesNoHalfFile)
{
    applet(1, port(2));
    std::ofstream(pictures()) << "no folder";
    EXPECT_EQ(grab({}).exitCode, 1);
    fs::remove(pictures());
    fs::create_directories(pictures() / "channel1-000001.png" / "in the way");
    EXPECT_THAT(grab({}).err, HasSubstr("is there from an earlier grab"));
    EXPECT_EQ(OrvoSim_countJournal(), 0U);   // refused before anything was opened

    EXPECT_EQ(grab({"1", "--overwrite"}).exitCode, 1);
    EXPECT_EQ(savedFiles(), std::vector<std::string>{"channel1-000001.png"});

    fs::remove_all(pictures());
    fs::create_directories(pictures());
    std::ofstream(pictures() / "channel1.png") << "from somebody else";
    EXPECT_EQ(grab({"1", "--count", "1"}).exitCode, 0);
}

TEST_F(Grab, RefusesChannelsThatAreNotThere)
{
    EXPECT_THAT(grab({"2"}).err, HasSubstr("There is no channel 2: the last one is 1"));
    m_machine.boards({});
    EXPECT_THAT(grab({}).err, HasSubstr("There is no channel: the adapter found no board"));
}

TEST(Png, HoldsNoPictureThatIsEmptyOrTooLarge)
{
    EXPECT_THROW(encodePng({0, 0, 1, {}}), std::runtime_error);
    EXPECT_THROW(encodePng({65'536, 65'536, 3, {1}}), std::runtime_error);
}

}   // namespace
}   // namespace orvo::aikctl

#include <algorithm>
#include <fstream>
#include <iterator>

#include <stb/stb_image.h>

#include "aikctl/grab/PictureIndex.h"
#include "aikctl/grab/PictureSaver.h"
#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

namespace fs = std::filesystem;

constexpr int kWidth = 16;
constexpr int kHeight = 11;
constexpr size_t kPixels = 176;   // no multiple of 3: a split by threes leaves bytes over

/// A picture as a person sees it.
struct Seen {
    int width;
    int height;
    int samples;
    std::vector<uint8_t> bytes;

    bool operator==(const Seen&) const = default;
};

class Grab : public AikctlTest {
protected:
    Grab()
    {
        applet(0, {{"width", kWidth}, {"height", kHeight}});
        applet(1, {{"width", kWidth}, {"height", kHeight}});
    }

    // Puts a picture of 16 bits a sample where a board can play it, and returns what a PNG keeps of it. No
    // two samples that could be mixed up are equal, nor are the two bytes of one.
    Seen putPhoto(const std::string& name, int samples)
    {
        Seen seen{kWidth, kHeight, samples, {}};
        std::string content = samples == 3 ? "P6 16 11 65535\n" : "P5 16 11 65535\n";
        while (seen.bytes.size() < kPixels * static_cast<size_t>(samples)) {
            seen.bytes.push_back(static_cast<uint8_t>(seen.bytes.size() * 7 % 251));
            content += {static_cast<char>(seen.bytes.back()), static_cast<char>(255 - seen.bytes.back())};
        }
        m_machine.file(name + "/photo.ppm", content);
        return seen;
    }

    // What the PNG of a channel's second picture shows: nothing if it is none. The first one is measured.
    Seen saved(int channel) const
    {
        Seen seen{};
        uint8_t* const pixels =
            stbi_load((second(channel) + "png").c_str(), &seen.width, &seen.height, &seen.samples, 0);
        if (pixels)
            seen.bytes.assign(pixels, pixels + ptrdiff_t{seen.width} * seen.height * seen.samples);
        stbi_image_free(pixels);
        return seen;
    }
    uintmax_t rawSize(int channel) const { return fs::file_size(second(channel) + "raw"); }
    std::string second(int channel) const
    {
        return (pictures() / ("channel" + std::to_string(channel) + "-000002.")).string();
    }
};

TEST_F(Grab, SavesEveryFormatAsTheBoardSawIt)
{
    const Seen grey = putPhoto("grey", 1);
    const Seen colour = putPhoto("colour", 3);
    json ports;
    for (const int format : {1, 2, 3, 4, 5, 6}) {
        const char* const photo = format == 1 || format == 3 ? "grey" : "colour";
        ports.push_back({{"format", format}, {"source", {{"folder", photo}}}});
    }
    m_machine.boards({test::Machine::grabber(0)});   // without a camera
    applet(0, {{"picturesPerSecond", 1000}, {"processes", {{{"dmas", ports}}}}});

    const Outcome packed = grab("--count 2");
    EXPECT_EQ(packed.exitCode, 0) << packed.err;
    for (const int channel : {0, 2})
        EXPECT_EQ(saved(channel), grey) << channel;
    for (const int channel : {1, 3, 5})
        EXPECT_EQ(saved(channel), colour) << channel;
    EXPECT_EQ(rawSize(4), kPixels * 5);
    EXPECT_THAT(packed.err,
                HasSubstr("channel 4: saved raw, for no PNG can show this: 5 bytes a pixel (code -1)"));
    EXPECT_THAT(packed.out, testing::ContainsRegex("\n1 +16 x 11  colour, 8 bits \\(code 7\\) +2 "));
    EXPECT_THAT(packed.out, HasSubstr("saved 12 pictures in " + pictures().string()));

    fs::remove_all(pictures());
    const Outcome planar = grab("--count 2 --planar");
    EXPECT_EQ(planar.exitCode, 0) << planar.err;
    EXPECT_EQ(saved(1), colour);
    const Seen planes = saved(5);
    EXPECT_EQ(std::make_pair(planes.width, planes.height), std::make_pair(2 * kWidth, 3 * kHeight));
    EXPECT_EQ(planes.bytes[0], 255 - colour.bytes[1]);   // the lower byte of the first pixel's green,
    EXPECT_EQ(planes.bytes[1], colour.bytes[0]);         // and the upper byte of its red
    for (const auto& [channel, bytesPerPixel] : {std::pair(0, 2U), {2, 1U}, {3, 4U}, {4, 5U}})
        EXPECT_EQ(rawSize(channel), kPixels * bytesPerPixel / 3 * 3) << channel;
    EXPECT_THAT(planar.err, HasSubstr("1 byte a pixel, split by threes (code 0)"));

    fs::remove_all(pictures());
    EXPECT_THAT(grab("--count 2 --raw").err, testing::Not(HasSubstr("saved raw")));
    for (const auto& [channel, bytesPerPixel] :
         {std::pair(0, 2U), {1, 3U}, {2, 1U}, {3, 4U}, {4, 5U}, {5, 6U}})
        EXPECT_EQ(rawSize(channel), kPixels * bytesPerPixel) << channel;
}

TEST_F(Grab, StartsTheCamerasOfABoardOnceUnlessToldNotTo)
{
    const Outcome unfed = grab("0 --no-camera --timeout 0.05");
    EXPECT_EQ(unfed.exitCode, 1);
    EXPECT_THAT(unfed.err, HasSubstr("channel 0: No picture came in time"));
    EXPECT_TRUE(fs::is_empty(pictures()));   // a GigE Vision camera sends only once it is started
    EXPECT_TRUE(journal("Eth_*").empty());

    OrvoSim_clearJournal();
    const Outcome fed = grab("0 1 --count 2");
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
    const Outcome ramps = grab("0 --count 2 --set Gain=6 --set Width=800 --set ReverseX=True "
                               "--set TestPattern=GreyHorizontalRamp");
    EXPECT_EQ(ramps.exitCode, 0) << ramps.err;
    EXPECT_THAT(journal("Eth_set*"),
                testing::IsSupersetOf({"Eth_setFloatValue camera=c1 name=\"Gain\" value=6 -> 0",
                                       "Eth_setIntegerValue camera=c1 name=\"Width\" value=800 -> 0",
                                       "Eth_setBooleanValue camera=c1 name=\"ReverseX\" value=1 -> 0"}));
    const Seen ramp = saved(0);
    EXPECT_GT(ramp.bytes.front(), ramp.bytes.back());   // mirrored

    for (const std::string nonsense : {"Gain=much", "Gain=99", "Grain=1", "ReverseX=yes"}) {
        const Outcome refused = grab("0 --count 1 --overwrite --set " + nonsense);
        EXPECT_EQ(refused.exitCode, 1);
        EXPECT_THAT(refused.err, HasSubstr("port 0: " + nonsense));
    }
}

TEST_F(Grab, TakesPicturesAtTheSameMomentByActionCommands)
{
    const json report = grab("0 1 --action --count 3 --json").json();
    EXPECT_EQ(report["channels"][0]["timestamps"].size(), 3U);
    EXPECT_EQ(report["channels"][0]["timestamps"], report["channels"][1]["timestamps"]);
    EXPECT_EQ(report["action"], (json{{"sent", 3}, {"matched", 3}}));
    EXPECT_EQ(journal("Eth_sendActionCommand").size(), 3U);
    EXPECT_TRUE(report["channels"][0]["lost"]["pictures"].is_null());   // no rate, no gaps
    EXPECT_EQ(report["channels"][0]["lost"]["gaps"], 0);

    EXPECT_THAT(grab("0 1 --action --count 2 --overwrite").out,
                HasSubstr("2 of 2 action commands made pictures of one time stamp on all channels (2)"));
    const Outcome alone = grab("0 --action --count 3 --overwrite --fail-on-loss");
    EXPECT_EQ(alone.exitCode, 0) << alone.err;
    EXPECT_THAT(alone.out, HasSubstr("there is nothing to compare"));
    const std::string lastTrigger = journal("Eth_set*").back();   // as it was before
    EXPECT_THAT(lastTrigger, testing::AllOf(HasSubstr("TriggerMode"), HasSubstr("Off")));

    const Outcome timed =
        grab("0 1 --action --seconds 0.2 --overwrite --json");   // ends between command and picture
    EXPECT_EQ(timed.exitCode, 0) << timed.err;
}

TEST_F(Grab, AdmitsThatActionCommandsDidNotWork)
{
    const Outcome unable = grab("all --action");
    EXPECT_EQ(unable.exitCode, 1);
    EXPECT_THAT(unable.err, HasSubstr("channel 2: the cameras of this board know no action commands"));
    EXPECT_FALSE(fs::exists(pictures()));
    EXPECT_TRUE(journal("Brd_AcquireEx").empty());
    EXPECT_THAT(journal("Eth_set*").back(), HasSubstr("name=\"TriggerMode\" text=\"Off\""));   // as before

    OrvoSim_answer("Eth_sendActionCommand", 2, 0);   // claims success
    const Outcome missed = grab("0 1 --action --count 3 --timeout 0.2 --json");
    EXPECT_EQ(missed.exitCode, 1);
    EXPECT_EQ(missed.json()["action"], (json{{"sent", 2}, {"matched", 1}}));
    EXPECT_THAT(missed.err, HasSubstr("1 of 2 action commands made no picture, or"));

    json board = test::Machine::grabber(0);
    board["cameras"] = {{{"port", 0}}};   // channel 1 has none, and takes pictures at its own rate
    m_machine.boards({board});
    const Outcome apart = grab("0 1 --action --count 3 --overwrite --json");
    EXPECT_EQ(apart.exitCode, 1);
    EXPECT_EQ(apart.json()["action"], (json{{"sent", 3}, {"matched", 0}}));
}

TEST_F(Grab, WritesToStandardOutputOrNowhere)
{
    const Outcome piped = run("grab 0 --count 3 --output -");
    EXPECT_EQ(piped.out.size(), 3 * kPixels);
    EXPECT_THAT(piped.err, HasSubstr("saved 3 pictures in standard output"));
    EXPECT_EQ(run("grab 0 --count 1 --output - --raw").out.size(), kPixels);
    EXPECT_EQ(run("grab 0 1 --output -").exitCode, 1);

    const Outcome discarded = run("grab 2 --count 30 --discard --buffers 7");
    EXPECT_THAT(discarded.out, HasSubstr(" pictures/s, 0.0 MB/s, skipped 0, lost 0"));
    EXPECT_THAT(discarded.out, HasSubstr("33.333 ms"));
    EXPECT_FALSE(fs::exists(pictures()));
    EXPECT_THAT(journal("Brd_AllocMemHead").back(), HasSubstr("bufferCount=7"));
    EXPECT_EQ(run("grab 2 --discard --seconds 0.1 --json").json()["exitCode"], 0);
}

TEST_F(Grab, FailsOnLossIfAskedTo)
{
    json board = test::Machine::grabber(0);   // without a camera
    board["faults"] = {{"dropEvery", 10}};
    m_machine.boards({board});
    applet(0, {{"picturesPerSecond", 500}});
    EXPECT_EQ(grab("0 --count 30").exitCode, 0);
    const Outcome lossy = grab("0 --count 30 --overwrite --fail-on-loss --index --json");
    EXPECT_EQ(lossy.exitCode, 1);
    EXPECT_GE(lossy.json()["channels"][0]["lost"]["pictures"], 3);
    EXPECT_EQ(lossy.json()["channels"][0]["files"].size(), 30U);
    {
        std::ifstream index(pictures() / "index.csv");   // closed before the next grab removes it
        EXPECT_EQ(std::count(std::istreambuf_iterator<char>(index), {}, '\n'), 31);
    }

    applet(0, {{"picturesPerSecond", 5}});   // so slow that no third one is left in the ring
    const Outcome unknown = grab("0 --count 1 --overwrite --fail-on-loss");
    EXPECT_EQ(unknown.exitCode, 1);
    EXPECT_THAT(unknown.err, HasSubstr("nobody can tell whether pictures were lost: fewer than three"));
}

TEST_F(Grab, GoesOnWithOtherChannelsWhenOneFails)
{
    const auto expectFailureBeside = [this](int failing, int working, const std::string& step,
                                            const std::string& text) {
        const Outcome grabbed = grab("1 0 1 2 --count 2 --overwrite --json");
        EXPECT_EQ(grabbed.exitCode, 1) << text;
        EXPECT_EQ(grabbed.err, "aikctl: " + step + "channel " + std::to_string(failing) + ": " + text + "\n");
        json report = grabbed.json();
        EXPECT_EQ(report["interrupted"], false);
        ASSERT_EQ(report["channels"].size(), 3U);
        EXPECT_EQ(report["channels"][static_cast<size_t>(failing)]["failure"], text);
        json channel = report["channels"][static_cast<size_t>(working)];
        EXPECT_GT(channel["picturesPerSecond"], 0.0);
        channel.erase("picturesPerSecond");
        EXPECT_EQ(channel["timestamps"].size(), 2U);
        EXPECT_EQ(channel["account"]["saved"], 2);
        const std::string name = "channel" + std::to_string(working) + "-00000";
        for (const char* const key :
             {"account", "lost", "intervals", "timestamps", "bottleneck"})   // as fast as this machine is
            channel.erase(key);
        EXPECT_EQ(channel,
                  (json{{"channel", working},
                        {"width", kWidth},
                        {"height", kHeight},
                        {"format", working == 2 ? "colour, 8 bits (code 7)" : "grey, 8 bits (code 0)"},
                        {"bytesPerPixel", working == 2 ? 3 : 1},
                        {"files", {name + "1.png", name + "2.png"}},
                        {"note", ""},
                        {"failure", ""},
                        {"failedStep", ""}}));
    };
    for (const auto& [call, step, text] :
         {std::tuple("Brd_setParameter board=0 id=100", "setup of ", "Cannot set BRD_WIDTH"),
          {"Brd_AddMem", "setup of ", "brd error code: -5"},
          {"Brd_AcquireEx", "start of ", "brd error code: -5"},
          {"Brd_stopAcquireEx", "stop of ", "brd error code: -5"}}) {
        OrvoSim_clearScript();
        OrvoSim_answer(call, 1, -5);
        expectFailureBeside(0, 2, step, text);
    }
    noApplet(1);
    expectFailureBeside(2, 0, "", noAppletFailure(1));
}

TEST_F(Grab, KeepsOlderPicturesAndLeavesNoHalfFile)
{
    std::ofstream(pictures()) << "no folder";
    EXPECT_THAT(grab("").err, testing::StartsWith("aikctl: Can't use the folder " + pictures().string()));
    fs::remove(pictures());
    fs::create_directories(pictures() / "channel2-000001.png" / "in the way");
    EXPECT_THAT(grab("").err, HasSubstr("is there from an earlier grab"));
    EXPECT_EQ(OrvoSim_countJournal(), 0U);   // refused before anything was opened

    const std::string unsaved = grab("2 --overwrite --count 1").err;
    EXPECT_THAT(unsaved, testing::StartsWith("aikctl: save of channel 2: Can't write " +
                                             (pictures() / "channel2-000001.png").string() + ": "));
    EXPECT_THAT(unsaved, HasSubstr("channel 2: 1 picture was fetched, but not saved"));
    EXPECT_FALSE(fs::exists(pictures() / "channel2-000001.png.part"));

    fs::remove_all(pictures());
    fs::create_directories(pictures());
    std::ofstream(pictures() / "channel2.png") << "from somebody else";
    EXPECT_EQ(grab("2 --count 1").exitCode, 0);
}

TEST_F(Grab, OverwritesOnceItIsSureToStart)
{
    EXPECT_EQ(grab("0 --count 3 --index").exitCode, 0);
    noApplet(1);
    for (const std::string refused : {"99", "0 --set Gain=99", "0 --roi 322x240", "2"}) {
        EXPECT_EQ(grab(refused + " --count 1 --overwrite").exitCode, 1);
        EXPECT_TRUE(fs::exists(pictures() / "channel0-000003.png")) << refused;
        EXPECT_EQ(run("grab " + refused + " --output " + (folder() / "new" / "one").string()).exitCode, 1);
        EXPECT_FALSE(fs::exists(folder() / "new")) << refused;
    }
    EXPECT_EQ(grab("0 --count 1 --overwrite").exitCode, 0);
    EXPECT_FALSE(fs::exists(pictures() / "channel0-000002.png"));
    EXPECT_FALSE(fs::exists(pictures() / "index.csv"));   // it named pictures that are gone

    const std::string index = (pictures() / "index.csv").string();
    std::ofstream(index) << "from somebody else";
    EXPECT_EQ(grab("0 --count 1 --overwrite").exitCode, 0);
    EXPECT_THAT(grab("0 --count 1 --overwrite --index").err, HasSubstr(index + " is no table of pictures"));
    EXPECT_EQ(textOf(index.c_str()), "from somebody else");
}

TEST_F(Grab, SaysThatTheTableOfThePicturesIsNotWhole)
{
    const fs::path full = "/dev/full";
    if (!fs::exists(full))
        GTEST_SKIP() << "no disk is full here";
    PictureIndex index(full);
    EXPECT_THROW(index.open(), std::runtime_error);
    SavedPictures saved;
    PictureSaver saver({.format = FileFormat::Raw},
                       {.save = [](const auto&, const auto&) { return std::string("one.raw"); },
                        .record = [&](const auto& name, const auto& queued) { index.add(name, queued); }},
                       1, 1);
    auto queued = saver.queue().room(1, [] { return true; });
    queued->picture = {.bytes = {queued->memory.get(), 1},
                       .width = 1,
                       .height = 1,
                       .bytesPerPixel = 1,
                       .format = {},
                       .timestamp = {}};
    queued->number = 1;
    queued->saved = &saved;
    saver.queue().put(std::move(queued));
    saver.finish();
    EXPECT_EQ(saved.failure, "Can't write /dev/full: No space left on device");
    EXPECT_EQ(saved.count, 1U);   // it is on the disk
}

TEST_F(Grab, RefusesChannelsThatAreNotThere)
{
    EXPECT_THAT(grab("3").err, HasSubstr("There is no channel 3: the last one is 2"));
    m_machine.boards({});
    EXPECT_THAT(grab("").err, HasSubstr("There is no channel: the adapter found no board"));
}

}   // namespace
}   // namespace orvo::aikctl

#include <fstream>
#include <map>
#include <numeric>
#include <random>
#include <set>

#include <stb/stb_image.h>

#include "aikctl/pictures/PictureFile.h"
#include "aikctl/pictures/PictureFolder.h"
#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

using Bytes = std::vector<uint8_t>;

/// A picture as a reader of the file sees it.
struct Decoded {
    int width = 0;
    int height = 0;
    int samples = 0;
    int bits = 0;
    std::vector<uint16_t> values{};   // from the top, red before green before blue

    bool operator==(const Decoded&) const = default;
};

// By stb, which leaves the bytes of 16-bit PGM samples as they stand.
Decoded decode(const PictureFile& file)
{
    const auto size = static_cast<int>(file.bytes.size());
    Decoded decoded;
    uint16_t* const values = stbi_load_16_from_memory(file.bytes.data(), size, &decoded.width,
                                                      &decoded.height, &decoded.samples, 0);
    decoded.bits = stbi_is_16_bit_from_memory(file.bytes.data(), size) ? 16 : 8;
    decoded.values.assign(values, values + ptrdiff_t{decoded.width} * decoded.height * decoded.samples);
    stbi_image_free(values);
    for (uint16_t& value : decoded.values)
        if (decoded.bits == 8)
            value &= 0xFF;
        else if (file.ending != "png")
            value = static_cast<uint16_t>(value << 8 | value >> 8);
    return decoded;
}

Decoded decodeTiff(const Bytes& file)
{
    const auto number = [&](size_t at, size_t bytes) {
        return std::accumulate(&file.at(at), &file.at(at + bytes - 1) + 1, 0U,
                               [](uint32_t upper, uint8_t lower) { return upper << 8 | lower; });
    };
    EXPECT_EQ(number(0, 4), 0x4D4D002AU);
    std::map<uint32_t, uint32_t> tags;
    for (size_t at = number(4, 4) + 2, entry = 0; entry < number(number(4, 4), 2); ++entry, at += 12)
        tags[number(at, 2)] =
            number(at + 2, 2) == 3 && number(at + 4, 4) == 1 ? number(at + 8, 2) : number(at + 8, 4);
    const uint32_t samples = tags[277];
    const uint32_t bits = samples == 1 ? tags[258] : number(tags[258] + 4, 2);
    EXPECT_EQ(tags[262], samples == 1 ? 1U : 2U);
    EXPECT_EQ(tags[279], tags[256] * tags[257] * samples * bits / 8);
    EXPECT_EQ(tags[273] + tags[279], file.size());
    Decoded decoded{static_cast<int>(tags[256]), static_cast<int>(tags[257]), static_cast<int>(samples),
                    static_cast<int>(bits)};
    for (size_t at = tags[273]; at < file.size(); at += bits / 8)
        decoded.values.push_back(static_cast<uint16_t>(number(at, bits / 8)));
    return decoded;
}

// Half noise, half constant.
Bytes halfNoise(size_t size)
{
    std::mt19937 random(1);
    Bytes bytes(size, 77);
    std::generate(bytes.begin(), bytes.begin() + static_cast<ptrdiff_t>(size / 2),
                  [&] { return static_cast<uint8_t>(random()); });
    return bytes;
}

aik::Picture pictureOf(const Bytes& bytes, uint32_t width, uint32_t height, uint32_t bytesPerPixel,
                       int32_t format)
{
    return {{bytes.data(), bytes.size()}, width, height, bytesPerPixel, false, format, {}};
}

TEST(PictureFile, ShowsEverySampleWithAllItsBits)
{
    constexpr int kColumns = 333;
    constexpr int kRows = 301;
    for (const auto& [code, samples, sampleBytes] : {std::tuple(AIK_PIXEL_MONO8, 1U, 1U),
                                                     {AIK_PIXEL_MONO16, 1U, 2U},
                                                     {AIK_PIXEL_BGR8, 3U, 1U},
                                                     {AIK_PIXEL_BGR16, 3U, 2U}}) {
        const Bytes bytes = halfNoise(size_t{kColumns} * kRows * samples * sampleBytes);
        Decoded sent{kColumns, kRows, static_cast<int>(samples), static_cast<int>(8 * sampleBytes)};
        for (size_t at = 0; at < bytes.size(); at += sampleBytes)
            sent.values.push_back(
                static_cast<uint16_t>(bytes[at] + (sampleBytes == 2 ? bytes[at + 1] << 8 : 0)));
        for (size_t at = 0; samples == 3 && at < sent.values.size(); at += 3)
            std::swap(sent.values[at], sent.values[at + 2]);

        const aik::Picture picture = pictureOf(bytes, kColumns, kRows, samples * sampleBytes, code);
        PictureFile file;
        for (const int compression : {0, 1, 2, 9}) {
            encode(picture, {FileFormat::Png, compression}, file);
            EXPECT_EQ(file.ending, "png");
            EXPECT_EQ(decode(file), sent) << code << ", compression " << compression;
        }
        encode(picture, {FileFormat::Pgm}, file);
        EXPECT_EQ(file.ending, samples == 3 ? "ppm" : "pgm");
        EXPECT_EQ(decode(file), sent) << code;
        encode(picture, {FileFormat::Tiff}, file);
        EXPECT_EQ(decodeTiff(file.bytes), sent) << code;
        encode(picture, {FileFormat::Raw}, file);
        EXPECT_EQ(file.ending + file.note, "raw");
        EXPECT_EQ(file.bytes, bytes);
    }
}

TEST(PictureFile, IsSmallerTheMoreItIsCompressed)
{
    constexpr size_t kColumns = 300;
    std::mt19937 random(1);
    Bytes photo(kColumns * kColumns);   // a slope with the noise of a sensor
    for (size_t at = 0; at < photo.size(); ++at)
        photo[at] = static_cast<uint8_t>(at / kColumns / 2 + at % kColumns / 3 + random() % 16);
    size_t least = photo.size() * 2;
    for (const int compression : {0, 1, 2, 4, 9}) {
        PictureFile file;
        encode(pictureOf(photo, kColumns, kColumns, 1, AIK_PIXEL_MONO8), {FileFormat::Png, compression},
               file);
        EXPECT_LE(file.bytes.size(), least) << compression;
        least = file.bytes.size();
    }
}

TEST(PictureFile, KeepsTheBytesOfWhatIsNoPictureAndSaysSo)
{
    PictureFile file;
    encode(pictureOf(halfNoise(20), 2, 2, 5, -1), {FileFormat::Tiff}, file);
    EXPECT_EQ(file.ending, "raw");
    EXPECT_EQ(file.bytes, halfNoise(20));
    EXPECT_EQ(file.note, "saved raw, for no TIFF can show this: 5 bytes a pixel (code -1)");
    EXPECT_THROW(encode(pictureOf({}, 0, 480, 0, AIK_PIXEL_MONO8), {FileFormat::Raw}, file),
                 std::runtime_error);
    EXPECT_THROW(encode(pictureOf({1}, 65'536, 65'536, 3, AIK_PIXEL_BGR8), {FileFormat::Tiff}, file),
                 std::runtime_error);
}

// The folder of a grab, which other programs may use, too.
class Folder : public AikctlTest {
protected:
    std::set<std::string> names() const
    {
        std::set<std::string> all;
        for (const auto& entry : std::filesystem::directory_iterator(pictures()))
            all.insert(entry.path().filename().string());
        return all;
    }
};

TEST_F(Folder, BelongsToOneGrabAtATime)
{
    const std::string path = pictures().string();
    {
        PictureFolder first(path, false);
        first.begin();
        EXPECT_THROW(PictureFolder(path, true), std::runtime_error);
        EXPECT_EQ(first.save(12, 1, "png", halfNoise(3)), "channel12-000001.png");
    }
    EXPECT_EQ(names(), (std::set<std::string>{"channel12-000001.png"}));
    std::ofstream(pictures() / "aikctl.lock") << "left by a process that was ended";
    EXPECT_NO_THROW(PictureFolder(path, true));
}

TEST_F(Folder, IsClearedOfOurOlderPicturesAlone)
{
    const std::set<std::string> others = {"channel0.png", "channel0-01.png", "my channel0-000001.png",
                                          "channel0-000001.jpg"};
    std::filesystem::create_directories(pictures());
    for (const std::string& name : others)
        std::ofstream(pictures() / name) << "of somebody else";
    for (const std::string name :
         {"channel0-000001.png", "channel9-1000000.tiff", "channel0-000002.pgm.part"}) {
        std::ofstream(pictures() / name) << "older";
        EXPECT_THROW(PictureFolder(pictures().string(), false), std::runtime_error) << name;
        EXPECT_NO_THROW(PictureFolder(pictures().string(), true).begin());
        EXPECT_EQ(names(), others);
    }
}

TEST_F(Folder, HoldsTheFormatThatWasAskedFor)
{
    for (const auto& [format, ending] :
         {std::pair("PNG", "png"), {"pgm", "ppm"}, {"tiff", "tiff"}, {"raw", "raw"}}) {
        const Outcome colour = grab("2 --count 1 --overwrite --format " + std::string(format));
        EXPECT_EQ(colour.exitCode, 0) << colour.err;
        EXPECT_EQ(names(), std::set<std::string>{"channel2-000001." + std::string(ending)});
    }
    EXPECT_EQ(grab("2 --format jpg").exitCode, 2);
    applet(1, {{"width", 0}});
    EXPECT_THAT(grab("2 --overwrite").err, HasSubstr("A picture of 0 x 480 has no pixels"));
    EXPECT_TRUE(names().empty());
}

}   // namespace
}   // namespace orvo::aikctl

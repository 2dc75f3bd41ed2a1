#include "aikctl/pictures/PictureFolder.h"

#include <fstream>

#include "tests/aikctl/AikctlTest.h"
#include "tests/aikctl/decodePng.h"

namespace orvo::aikctl {
namespace {

namespace fs = std::filesystem;

class APictureFolder : public AikctlTest {
protected:
    PictureFolder open(bool overwrite = false) const { return {pictures().string(), overwrite}; }

    static constexpr uint8_t kContent[] = {1, 2, 3};
};

TEST_F(APictureFolder, KeepsOlderPicturesUnlessToldOtherwiseAndMindsNoOtherFile)
{
    std::ofstream(pictures()) << "no folder";
    EXPECT_THROW(open(), std::runtime_error);
    fs::remove(pictures());
    fs::create_directories(pictures());
    std::ofstream(pictures() / "channel0.png") << "a photo";
    open().save(0, 1, "raw", kContent);
    EXPECT_THROW(open(), std::runtime_error);
    open(true).save(0, 1, "raw", {});
    EXPECT_EQ(fs::file_size(pictures() / "channel0-000001.raw"), 0U);
}

TEST_F(APictureFolder, LeavesNothingHalfDoneBehindAFailure)
{
    const PictureFolder saving = open();
    fs::create_directories(pictures() / "channel0-000001.png" / "in the way");
    EXPECT_THROW(saving.save(0, 1, "png", kContent), std::runtime_error);
    EXPECT_EQ(savedFiles(), std::vector<std::string>{"channel0-000001.png"});

    fs::remove_all(pictures());
    EXPECT_THROW(saving.save(0, 1, "png", kContent), std::runtime_error);
}

}   // namespace
}   // namespace orvo::aikctl

#include "aikctl/adapter/Adapter.h"

#include <fstream>

#include "os/Os.h"
#include "os/Program.h"
#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

namespace fs = std::filesystem;

class RequiredLibraries : public AikctlTest {
protected:
    RequiredLibraries()
    {
        os::setEnvironmentVariable("ORVODIR5_64", "");
        os::setEnvironmentVariable("ORVODIR5", "");
    }

    std::string file(const fs::path& relative) const
    {
        const fs::path path = (folder() / relative).make_preferred();
        fs::create_directories(path.parent_path());
        std::ofstream(path) << "no library";
        return path.string();
    }
    fs::path boardLibraryBelow(const fs::path& installation) const
    {
        return installation / "bin" / (std::string("brdlib5") + os::kLibraryEnding);
    }

    // What is said of a missing file; empty if nothing is missing.
    static std::string complaintAbout(const std::string& adapter)
    {
        try {
            requireLibraries(adapter);
            return "";
        } catch (const std::runtime_error& failure) {
            return failure.what();
        }
    }
    static void expectIn(const std::string& text, const std::string& part)
    {
        EXPECT_NE(text.find(part), std::string::npos) << text << "\nlacks " << part;
    }
};

TEST_F(RequiredLibraries, AreLookedForInTheAdaptersOwnInstallation)
{
    const std::string adapter = file("lib64/vision/adapter");
    expectIn(complaintAbout(adapter), "looked for " + (folder() / boardLibraryBelow("")).string());
    file(boardLibraryBelow(""));
    EXPECT_EQ(complaintAbout(adapter), "");
}

TEST_F(RequiredLibraries, AreLookedForWhereTheEnvironmentSaysIfTheAdapterLiesElsewhere)
{
    const std::string adapter = file("elsewhere/adapter");
    expectIn(complaintAbout(adapter), "neither ORVODIR5_64 nor ORVODIR5 is set");

    os::setEnvironmentVariable("ORVODIR5", (folder() / "old").string() + os::kSeparator);
    expectIn(complaintAbout(adapter), "looked for " + (folder() / boardLibraryBelow("old")).string());

    file(boardLibraryBelow("new"));
    os::setEnvironmentVariable("ORVODIR5_64", (folder() / "new").string());
    EXPECT_EQ(complaintAbout(adapter), "");
}

TEST_F(RequiredLibraries, AreMissedByTheProgramBeforeItLoadsTheAdapter)
{
    const std::string adapter = file("bin/adapter");
    const Outcome nothing = run({"list", "--adapter", (folder() / "nowhere").string()});
    EXPECT_EQ(nothing.exitCode, 1);
    expectIn(nothing.err, "looked for " + (folder() / "nowhere").string());

    const Outcome half = run({"list", "-a", adapter});
    EXPECT_EQ(half.exitCode, 1);
    expectIn(half.err, "brdlib5");

    file(boardLibraryBelow(""));
    const std::string neighbour = std::string("bin/ethlib") + os::kLibraryEnding;
    file(neighbour);
    const Outcome noLibrary = run({"list", "-a", adapter});
    EXPECT_EQ(noLibrary.exitCode, 1);
    expectIn(noLibrary.err, (folder() / neighbour).make_preferred().string() + " can't be loaded");
    EXPECT_EQ(noLibrary.out, "");
}

TEST_F(RequiredLibraries, DontMakeAnAdapterOfAnyLibrary)
{
    const fs::path here = os::modulePath(reinterpret_cast<const void*>(&complaintAbout));
    const auto other = (here.parent_path() / "common-logging-dispatcher").string() + os::kLibraryEnding;
    expectIn(run({"list", "-a", other}).err, "is no adapter: it doesn't export GetVideoChannel");
}

}   // namespace
}   // namespace orvo::aikctl

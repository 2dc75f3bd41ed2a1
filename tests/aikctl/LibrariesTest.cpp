#include <fstream>

#include "os/Os.h"
#include "os/Program.h"
#include "tests/aikctl/AikctlTest.h"

namespace orvo::aikctl {
namespace {

namespace fs = std::filesystem;

// Adapters that nothing can load, in folders with and without the libraries that an adapter needs.
class Libraries : public AikctlTest {
protected:
    Libraries()
    {
        os::setEnvironmentVariable("ORVODIR5_64", "");
        os::setEnvironmentVariable("ORVODIR5", "");
    }

    std::string path(const fs::path& relative) const
    {
        return (folder() / relative).make_preferred().string();
    }
    std::string library(const std::string& name) const { return path(name + os::kLibraryEnding); }
    static void put(const std::string& file)
    {
        fs::create_directories(fs::path(file).parent_path());
        std::ofstream(file) << "no library";
    }

    void expectComplaint(const std::string& adapter, const std::string& text) const
    {
        const Outcome list = run("list --adapter " + adapter);
        EXPECT_EQ(list.exitCode, 3);
        EXPECT_THAT(list.err, HasSubstr(text));
        EXPECT_EQ(list.out, "");
    }
};

TEST_F(Libraries, AreNamedWithThePlaceWhereOneIsMissing)
{
    const std::string inside = path("lib64/vision/adapter");
    expectComplaint(inside, "The adapter is missing: looked for " + inside);
    put(inside);
    expectComplaint(inside, "looked for " + library("bin/brdlib5"));
    put(library("bin/brdlib5"));
    expectComplaint(inside, "The adapter can't be loaded: " + inside);   // nothing else is missing

    const std::string outside = path("elsewhere/adapter");
    put(outside);
    expectComplaint(outside, "neither ORVODIR5_64 nor ORVODIR5 is set");
    os::setEnvironmentVariable("ORVODIR5", path("old") + os::kSeparator);
    expectComplaint(outside, "looked for " + library("old/bin/brdlib5"));
    os::setEnvironmentVariable("ORVODIR5_64", path("new"));
    put(library("new/bin/brdlib5"));
    expectComplaint(outside, "The adapter can't be loaded: " + outside);

    put(library("elsewhere/ethlib"));
    expectComplaint(outside, library("elsewhere/ethlib") + " can't be loaded");
}

TEST_F(Libraries, AreNoAdapterWithoutItsExports)
{
    const fs::path here = os::modulePath(reinterpret_cast<const void*>(&put));
    expectComplaint((here.parent_path() / "common-logging-dispatcher").string() + os::kLibraryEnding,
                    "is no adapter: it doesn't export GetVideoChannel");
}

}   // namespace
}   // namespace orvo::aikctl

// What becomes of the adapter where its libraries are missing or old. A program of its own, outside any
// installation: a process finds once which one serves it. So the order of the cases counts, though each works in
// a process of its own, too.
#include <gtest/gtest.h>

#include "brdlib/binding/BrdFunctions.h"
#include "brdlib/binding/SharedLibrary.h"
#include "os/InstallationDirectory.h"
#include "os/Program.h"
#include "tests/support/LibraryUse.h"
#include "tests/support/Places.h"
#include "tests/support/ScopedVariable.h"
#include "tools/logging/Logging.h"

using namespace orvo;
using namespace orvo::cognex;

namespace {

class BareInstallation : public testing::Test {
protected:
    void SetUp() override
    {
        if (os::installationOf(test::libraryBesideUs(""), os::kSeparator))
            GTEST_SKIP() << "this build folder lies below a folder of libraries";
    }

    /// What an old library lacks counts as out of reach, and all else goes on.
    static void expectNothingReached(const char* directory)
    {
        int32_t length = 0;
        EXPECT_EQ(Brd_InitLibraries(directory), -2130);
        EXPECT_EQ(Brd_getParameterPropertyEx(nullptr, 100, 0, 0, nullptr, &length), -2130);
        EXPECT_EQ(Brd_InitConfigEx("board.mcf", 0, 0), nullptr);
        Brd_FreeLibraries();
    }

    /// Every name gets the one logger for which all levels in use are off.
    static void expectSilence()
    {
        using namespace tools::logging;
        const test::LibraryUse use;
        Logger* const logger = Logging::instance().getLogger("orvo.Cognex.Interface");
        EXPECT_EQ(Logging::instance().getLogger("orvo.Cognex.DmaPort"), logger);
        EXPECT_FALSE(logger->isEnabled(kTrace));
        EXPECT_FALSE(logger->isEnabled(kCaught));
        logger->write(kCaught, "to nobody", 0, 0);
    }
};

TEST_F(BareInstallation, IsLookedForAgainAfterAMiss)
{
    const test::ScopedVariable newer("ORVODIR5_64", "");
    const test::ScopedVariable older("ORVODIR5", "");
    EXPECT_EQ(installationDirectory(), nullptr);
    EXPECT_EQ(openLibrary("brdlib5", nullptr), nullptr);
    EXPECT_EQ(loadBoardLibrary(nullptr), -2130);
    expectNothingReached(nullptr);
    expectNothingReached(test::libraryBesideUs("no-such-folder").c_str());
    expectSilence();
}

TEST_F(BareInstallation, IsNamedByAVariableForGood)
{
    const test::ScopedVariable older("ORVODIR5", "not this one");
    const test::ScopedVariable newer("ORVODIR5_64",
                                     test::oldInstallation() + os::kSeparator + os::kSeparator);
    EXPECT_STREQ(installationDirectory(), test::oldInstallation().c_str());
    os::setEnvironmentVariable("ORVODIR5_64", "");
    EXPECT_STREQ(installationDirectory(), test::oldInstallation().c_str());

    ASSERT_NE(openLibrary("common-logging-dispatcher", nullptr), nullptr);
    expectSilence();   // that library has no table
    expectNothingReached(nullptr);
    const char* const path = "board.hap";
    EXPECT_EQ(Brd_InitEx(path, 0, 0), path);   // the one function that it has
}

}   // namespace

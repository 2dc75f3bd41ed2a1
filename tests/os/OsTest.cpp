#include "os/Os.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "brdlib/binding/SharedLibrary.h"
#include "os/InstallationDirectory.h"
#include "tests/support/Places.h"
#include "tests/support/ScopedVariable.h"

using namespace orvo;
using namespace orvo::os;

namespace {

TEST(Installation, IsTheParentOfTheNearestLibraryFolderAboveTheModule)
{
    EXPECT_EQ(installationOf(R"(C:\X\bin\plugins\a.dll)", '\\'), R"(C:\X)");
    EXPECT_EQ(installationOf(R"(C:\bin\X\lib64\sub\deep\a.dll)", '\\'), R"(C:\bin\X)");
    EXPECT_EQ(installationOf(R"(C:\X\\dll\\\a.dll)", '\\'), R"(C:\X)");
    EXPECT_EQ(installationOf(R"(C:\X\hardware applets\a.dll)", '\\'), R"(C:\X)");
    EXPECT_EQ(installationOf("/opt/x/Bin/plugins/a.so", '/'), "/opt/x");
    EXPECT_EQ(installationOf("/opt//lib//a.so", '/'), "/opt");
    EXPECT_EQ(installationOf(R"(C:\X\my bin\binaries\a.dll)", '\\'), std::nullopt);
    EXPECT_EQ(installationOf(R"(C:\X\bin)", '\\'), std::nullopt);   // the module itself has this name
    EXPECT_EQ(installationOf("C:/X/bin/a.dll", '\\'), std::nullopt);
    EXPECT_EQ(installationOf("/a.so", '/'), std::nullopt);
    EXPECT_EQ(installationOf("", '/'), std::nullopt);
}

TEST(Installation, IsNamedByAVariableForAModuleOutsideAnyOther)
{
    const std::string slash(1, kSeparator);
    const std::string folder = slash + "x";
    const std::string outside = folder + slash + "a";
    const test::ScopedVariable newer("ORVODIR5_64", "newer" + slash + slash);
    const test::ScopedVariable older("ORVODIR5", "older");
    EXPECT_EQ(installationServing(folder + slash + "lib" + slash + "a"), folder);
    EXPECT_EQ(installationServing(outside), "newer");
    setEnvironmentVariable("ORVODIR5_64", "");
    EXPECT_EQ(installationServing(outside), "older");
    setEnvironmentVariable("ORVODIR5", "");
    EXPECT_EQ(installationServing(outside), std::nullopt);
}

TEST(Libraries, SayWhyTheyCannotBeLoaded)
{
    const std::string nowhere = test::libraryBesideUs("no-such-library");
    const cognex::SharedLibrary library(nowhere, cognex::SharedLibrary::Unload::Never);
    EXPECT_FALSE(library.isLoaded());
    EXPECT_EQ(library.symbol("Info"), nullptr);
    EXPECT_NE(library.error().number, 0u);
    EXPECT_NE(library.error().text, "");
}

TEST(Libraries, AreUnloadedWithTheirObjectOnlyOnRequest)
{
    using cognex::SharedLibrary;
    const std::string path = test::libraryOfOldInstallation("brdlib5");
    Symbol symbol = nullptr;
    {
        const SharedLibrary library(path, SharedLibrary::Unload::OnDestruction);
        ASSERT_TRUE(library.isLoaded());
        EXPECT_EQ(library.error().number, 0u);
        EXPECT_EQ(library.error().text, "");
        EXPECT_EQ(library.symbol("Info"), nullptr);
        symbol = library.symbol("Brd_InitEx");
        EXPECT_TRUE(std::filesystem::equivalent(modulePath(symbol), path));
    }
    EXPECT_EQ(modulePath(symbol), "");
    const std::string other = test::libraryOfOldInstallation("common-logging-dispatcher");
    symbol = SharedLibrary(other, SharedLibrary::Unload::Never).symbol("Brd_InitEx");
    EXPECT_TRUE(std::filesystem::equivalent(modulePath(symbol), other));
}

}   // namespace

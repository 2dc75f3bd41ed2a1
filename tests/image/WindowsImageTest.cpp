#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/image/WindowsImage.h"
#include "tests/system/Adapter.h"

namespace orvo::test {

namespace {

class AdapterImage : public testing::Test {
protected:
    const std::string path = Adapter::folder() + "OrvoCognexAdapter.dll";
    const WindowsImage image{path};
};

TEST_F(AdapterImage, ExportsFifteenNamesWithTheirOrdinalsAndNothingElse)
{
    const std::map<uint32_t, std::string> exports = {
        {1, "GetVideoChannel"},   {2, "SetupCommonParams"},   {3, "ReleaseVideoChannel"},
        {10, "GetImage"},         {11, "WaitForIntegration"}, {12, "GetImageAttributes"},
        {20, "StartAcquisition"}, {21, "StopAcquisition"},    {22, "ExecuteCommand"},
        {23, "ReadValue"},        {24, "WriteValue"},         {30, "GetFeatureName"},
        {31, "GetFeatureType"},   {32, "GetFeatureAttr"},     {33, "GetValidEnum"},
    };
    EXPECT_EQ(image.exportsByOrdinal(), exports);
}

TEST_F(AdapterImage, NeedsTheSystemAndTheTwoCameraLibrariesByOrdinalAlone)
{
    auto imports = image.imports();
    for (const char* library : {"ethlib.dll", "orvo_genicam.dll"}) {
        EXPECT_THAT(imports[library].ordinals, testing::Not(testing::IsEmpty()));
        EXPECT_THAT(imports[library].names, testing::IsEmpty());
        imports.erase(library);
    }
    EXPECT_TRUE(imports.contains("kernel32.dll"));
    for (const auto& [library, imported] : imports)
        EXPECT_THAT(library,
                    testing::AnyOf("kernel32.dll", "msvcrt.dll", testing::StartsWith("api-ms-win-")));
}

TEST_F(AdapterImage, IsHardenedVersionedAndStripped)
{
    constexpr uint16_t kHighEntropyDynamicBaseNoExecute = 0x20 | 0x40 | 0x100;
    EXPECT_EQ(image.securityFlags() & kHighEntropyDynamicBaseNoExecute, kHighEntropyDynamicBaseNoExecute);
    EXPECT_TRUE(image.sections().contains(".reloc"));   // without it the base can't move
    EXPECT_THAT(image.fileVersion(), testing::Optional(testing::ElementsAre(3, 0, 0, 0)));
    EXPECT_EQ(image.symbolCount(), 0u);
    EXPECT_GT(std::filesystem::file_size(path + ".debug"), std::filesystem::file_size(path));
}

}   // namespace

}   // namespace orvo::test

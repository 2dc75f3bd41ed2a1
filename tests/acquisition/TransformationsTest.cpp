#include <string>

#include <gtest/gtest.h>

#include "acquisition/PixelTransformation.h"
#include "acquisition/buffers/Buffer.h"
#include "tests/support/Failures.h"

using namespace orvo::cognex;

namespace {

/// What the host's memory holds then, with three bytes behind it; '#' is where nothing was written.
template <typename Transformation>
std::string transformed(const std::string& bytes)
{
    const auto buffer = std::make_shared<Buffer>(bytes.size());
    bytes.copy(static_cast<char*>(buffer->data()), bytes.size());
    std::string memory(bytes.size() + 3, '#');
    Transformation().transform(memory.data(), buffer);
    return memory;
}

TEST(Transformations, CopyTheBlockOrMakeThreePlanesOfItsPixelsInReverseOrder)
{
    EXPECT_EQ(transformed<NoTransformation>(""), "###");
    EXPECT_EQ(transformed<NoTransformation>("a"), "a###");
    EXPECT_EQ(transformed<NoTransformation>("abcdefghij"), "abcdefghij###");
    EXPECT_EQ(transformed<RGB8PackedToPlanar>(""), "###");
    EXPECT_EQ(transformed<RGB8PackedToPlanar>("a"), "####");
    EXPECT_EQ(transformed<RGB8PackedToPlanar>("ab"), "#####");
    EXPECT_EQ(transformed<RGB8PackedToPlanar>("abc"), "cba###");
    EXPECT_EQ(transformed<RGB8PackedToPlanar>("abcdefghij"), "cfibehadg####");

    const std::string gone = "No image arrived within the given timeout.";
    EXPECT_EQ(orvo::test::pending([] { NoTransformation().transform(nullptr, {}); }), gone);
    EXPECT_EQ(orvo::test::pending([] { RGB8PackedToPlanar().transform(nullptr, {}); }), gone);
}

}   // namespace

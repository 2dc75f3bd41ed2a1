#pragma once

#include <string>

#include <gtest/gtest.h>

#include "tests/support/Machine.h"

namespace orvo::test {

/// What a test saw of a whole session, step by step, compared with a file of tests/system/transcripts.
class Transcript {
public:
    void add(const std::string& step, const Lines& lines);

    /// Whether `name`.txt holds the same. If it doesn't, what was seen is written beside the copy of that file
    /// in the folder of the build, for a comparison or as its new content.
    testing::AssertionResult isThatOf(const std::string& name) const;

private:
    std::string m_text;
};

}   // namespace orvo::test

#pragma once

#include <string>

#include "aikctl/pictures/PictureFile.h"

namespace CLI   // NOLINT(readability-identifier-naming): the library's own name
{
class App;
}

namespace orvo::aikctl {

/// Where the pictures of a grab go, and as what.
struct FileOptions {
    std::string folder = "pictures";
    bool isOverwriting = false;
    Encoding encoding;
};

/// Adds the options to a command. They are filled when the command line is read.
void declareFileOptions(CLI::App& command, FileOptions& options);

}   // namespace orvo::aikctl

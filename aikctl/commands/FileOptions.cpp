#include "aikctl/commands/FileOptions.h"

#include <CLI/CLI.hpp>

namespace orvo::aikctl {

void declareFileOptions(CLI::App& command, FileOptions& options)
{
    command.add_option("-o,--output", options.folder, "The folder for the pictures; made if it isn't there")
        ->type_name("FOLDER")
        ->check([](const std::string& text) { return text.empty() ? "The folder has no name" : ""; })
        ->capture_default_str();
    command.add_flag("--overwrite", options.isOverwriting,
                     "Accept a folder that holds pictures of an earlier grab");
    command.add_flag_callback(
        "--raw", [&options] { options.encoding.format = FileFormat::Raw; },
        "Save the bytes as they come, with all 16 bits of a sample, instead of a PNG with 8 bits");
}

}   // namespace orvo::aikctl

#include "aikctl/commands/FileOptions.h"

#include <map>

#include <CLI/CLI.hpp>

#include "aikctl/commands/Command.h"

namespace orvo::aikctl {

void declareFileOptions(CLI::App& command, FileOptions& options)
{
    static const std::map<std::string, FileFormat> formats = {{"png", FileFormat::Png},
                                                              {"pgm", FileFormat::Pgm},
                                                              {"tiff", FileFormat::Tiff},
                                                              {"raw", FileFormat::Raw}};
    command.add_option("-o,--output", options.folder, "The folder for the pictures; made if it isn't there")
        ->type_name("FOLDER")
        ->check([](const std::string& text) { return text.empty() ? "The folder has no name" : ""; })
        ->capture_default_str();
    command.add_flag("--overwrite", options.isOverwriting,
                     "Remove the pictures of an earlier grab from the folder");
    const auto setFormat = [&options](const std::string& name) {
        options.encoding.format = formats.at(name);
    };
    CLI::Option* const format = command
                                    .add_option_function<std::string>(
                                        "-f,--format", setFormat,
                                        "What pictures are saved as. pgm means PPM for colours; raw keeps "
                                        "the bytes as they come")
                                    ->transform(CLI::IsMember(formats, CLI::ignore_case))
                                    ->default_str("png");
    command
        .add_flag_callback(
            "--raw", [&options] { options.encoding.format = FileFormat::Raw; }, "The same as --format raw")
        ->excludes(format);
    command
        .add_option("--compression", options.encoding.compression,
                    "Of PNG files: 0 for none, which is fastest, up to 9 for the smallest")
        ->type_name("LEVEL")
        ->check(wholeNumber(0, 9))
        ->capture_default_str();
}

}   // namespace orvo::aikctl

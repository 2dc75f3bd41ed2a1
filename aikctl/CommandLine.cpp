#include "aikctl/CommandLine.h"

#include <exception>
#include <memory>
#include <sstream>
#include <string>

#include <CLI/CLI.hpp>

#include "aikctl/Adapter.h"
#include "aikctl/Console.h"
#include "aikctl/FeaturesCommand.h"
#include "aikctl/GrabCommand.h"
#include "aikctl/ListCommand.h"
#include "aikctl/ReferenceCommand.h"
#include "aikctl/StepsCommand.h"

namespace orvo::aikctl {

namespace {

constexpr const char* kDescription =
    "Shows the video channels of an OrvoCognexAdapter with their features, leads their cameras and grabs\n"
    "pictures from them.";
constexpr const char* kFooter =
    "The environment names the boards' applets (ORVO_COGNEX_APPLET_0 and so on), and where an adapter that\n"
    "lies outside an installation finds one (ORVODIR5_64, ORVODIR5).\n"
    "Exit codes: 0 done, 1 something failed, 2 wrong usage, 130 interrupted.";

// Help goes where results go, and a complaint where complaints go.
int answerParser(const CLI::App& program, const CLI::ParseError& error, Console& console)
{
    std::ostringstream complaint;
    const bool isHelp = program.exit(error, console.out(), complaint) == 0;
    if (isHelp)
        return kDone;
    std::string text = complaint.str();
    text.erase(text.find_last_not_of('\n') + 1);
    console.fail(text);
    return kMisused;
}

}   // namespace

int runCommandLine(int argc, const char* const* argv, Console& console)
{
    CLI::App program(kDescription, "aikctl");
    program.footer(kFooter);
    program.require_subcommand(0, 1);   // none is noticed below: an unknown one is then told by its name
    program.fallthrough();              // the options of all commands may stand behind the command too

    std::string adapterPath;
    CommonOptions common;
    program.add_option("-a,--adapter", adapterPath, "The adapter's file; without it, the one beside aikctl")
        ->type_name("FILE");
    program.add_flag("--json", common.json, "Write results as JSON");

    const std::unique_ptr<Command> commands[] = {
        std::make_unique<ListCommand>(),        std::make_unique<FeaturesCommand>(),
        std::make_unique<StepsCommand>("get"),  std::make_unique<StepsCommand>("set"),
        std::make_unique<StepsCommand>("exec"), std::make_unique<StepsCommand>("do"),
        std::make_unique<GrabCommand>(),        std::make_unique<ReferenceCommand>(),
    };
    Command* chosen = nullptr;
    for (const auto& command : commands)
        command->declare(program)->callback([&chosen, &command] { chosen = command.get(); });

    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return answerParser(program, error, console);
    }
    if (!chosen) {
        console.fail("No command is given.\nRun with --help for more information.");
        return kMisused;
    }
    try {
        const Adapter adapter(adapterPath.empty() ? Adapter::defaultPath() : adapterPath);
        chosen->run(adapter, common, console);
    } catch (const std::exception& failure) {
        console.fail(failure.what());
    }
    if (console.hasFailed())
        return kFailed;
    return console.interrupted() ? kInterrupted : kDone;
}

}   // namespace orvo::aikctl

#include "aikctl/commands/CommandLine.h"

#include <exception>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include <CLI/CLI.hpp>

#include "aikctl/adapter/Adapter.h"
#include "aikctl/commands/Command.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

constexpr const char* kDescription = "Shows the video channels of an OrvoCognexAdapter and their features, "
                                     "connects and starts their cameras,\n"
                                     "and grabs pictures.";
constexpr const char* kFooter = "Environment: ORVO_COGNEX_APPLET_0 to ORVO_COGNEX_APPLET_7 name the applet "
                                "file of each board. ORVODIR5_64,\n"
                                "or ORVODIR5, names the installation if the adapter lies outside of one.\n"
                                "Exit codes: 0 done, 1 something failed, 2 wrong usage, 130 interrupted.";

struct CommandRow {
    const char* name;
    const char* help;
    std::unique_ptr<Command> (*make)();
};

constexpr CommandRow kCommands[] = {
    {"list", "Lists the channels", makeListCommand},
    {"features", "Lists the features of a channel; changes and executes none", makeFeaturesCommand},
    {"get", "Reads a feature", makeStepsCommand},
    {"set", "Writes a feature", makeStepsCommand},
    {"exec", "Executes a command feature", makeStepsCommand},
    {"do", "Carries out steps in their order on one open channel", makeStepsCommand},
    {"grab", "Grabs pictures and saves them as files", makeGrabCommand},
    {"reference", "Prints docs/features.md, the page about all features; connects cameras",
     makeReferenceCommand},
};

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
    program.require_subcommand(0, 1);   // a missing one is noticed below, so that an unknown one is named
    program.fallthrough();              // options of all commands are accepted after the command as well

    std::string adapterPath;
    CommonOptions common;
    program.add_option("-a,--adapter", adapterPath, "The adapter's file; by default the one beside aikctl")
        ->type_name("FILE");
    program.add_flag("--json", common.json, "Write results as JSON");

    std::vector<std::unique_ptr<Command>> commands;
    Command* chosen = nullptr;
    for (const CommandRow& row : kCommands) {
        Command* const command = commands.emplace_back(row.make()).get();
        CLI::App* const self = program.add_subcommand(row.name, row.help);
        command->declare(*self);
        self->callback([&chosen, command] { chosen = command; });
    }

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
        const aik::Adapter adapter = loadAdapter(adapterPath.empty() ? defaultAdapterPath() : adapterPath);
        chosen->run(adapter, common, console);
    } catch (const std::exception& failure) {
        console.fail(failure.what());
    }
    if (console.hasFailed())
        return kFailed;
    return console.interrupted() ? kInterrupted : kDone;
}

}   // namespace orvo::aikctl

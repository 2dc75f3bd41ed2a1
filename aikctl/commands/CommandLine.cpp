#include "aikctl/commands/CommandLine.h"

#include <algorithm>
#include <cerrno>
#include <exception>
#include <memory>
#include <ostream>
#include <sstream>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include <CLI/CLI.hpp>
#include <nlohmann/json.hpp>

#include "aikctl/adapter/Adapter.h"
#include "aikctl/commands/Command.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

namespace {

constexpr const char* kDescription = "Shows the video channels of an OrvoCognexAdapter and their features, "
                                     "connects and starts their cameras,\n"
                                     "and grabs pictures.";
constexpr const char* kFooter =
    "Environment: ORVO_COGNEX_APPLET_0 to ORVO_COGNEX_APPLET_7 name the applet "
    "file of each board. ORVODIR5_64,\n"
    "or ORVODIR5, names the installation if the adapter lies outside of one.\n"
    "Exit codes: 0 done, 1 something failed, 2 wrong usage, 3 no adapter, 130 interrupted.";

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
    {"params", "Reads the known parameters of a channel's board and cameras", makeParamsCommand},
    {"grab", "Grabs pictures and saves them as files", makeGrabCommand},
    {"reference", "Prints docs/features.md, the page about all features; connects cameras",
     makeReferenceCommand},
};

constexpr const char* kSeeHelp = "\nRun with --help for more information.";
constexpr const char* kAdapterHelp = "The adapter's file; by default the one beside aikctl";
constexpr const char* kJsonHelp = "Print one JSON object, also when the command fails";

// Changes when the JSON changes in a way that could break a program that reads it.
constexpr int kJsonSchema = 1;

/// What the arguments ask for, as far as they could be understood.
struct Request {
    std::string command;   // empty for none
    bool isJson = false;
};

void answer(const std::string& text, const Request& request, Console& console)
{
    if (request.isJson)
        console.print({{"text", text}});
    else
        console.out() << text;
}

// Help goes where results go, and a complaint where complaints go.
ExitStatus answerParser(const CLI::App& program, const CLI::ParseError& error, const Request& request,
                        Console& console)
{
    std::ostringstream help;
    std::ostringstream complaint;
    if (program.exit(error, help, complaint) == 0) {
        answer(help.str(), request, console);
        return ExitStatus::Fine;
    }
    // What nobody knows goes first: often it is why something else is missing.
    std::string unexpected;
    for (const std::string& word : program.remaining(true))
        unexpected += word == "--" ? "" : " " + word;
    console.fail((unexpected.empty() ? error.what() : "This was not expected:" + unexpected) + kSeeHelp);
    return ExitStatus::WrongUsage;
}

ExitStatus runCommand(Command& command, const std::string& adapterPath, const CommonOptions& common,
                      Console& console)
{
    try {
        const aik::Adapter adapter = loadAdapter(adapterPath.empty() ? defaultAdapterPath() : adapterPath);
        command.run(adapter, common, console);
    } catch (const aik::LoadError& failure) {
        console.fail(failure.what());
        return ExitStatus::NoAdapter;
    } catch (const std::exception& failure) {
        console.fail(failure.what());
    }
    if (console.hasFailed())
        return ExitStatus::Failed;
    return console.interrupted() ? ExitStatus::Interrupted : ExitStatus::Fine;
}

ExitStatus parseAndRun(int argc, const char* const* argv, Request& request, Console& console)
{
    CLI::App program(kDescription, "aikctl");
    program.footer(kFooter);
    program.require_subcommand(0, 1);   // a missing one is noticed below, so that an unknown one is named
    program.fallthrough();              // options of all commands are accepted after the command as well
    program.set_version_flag("--version", "aikctl " AIKCTL_VERSION);

    std::string adapterPath;
    CommonOptions common;
    program.add_option("-a,--adapter", adapterPath, kAdapterHelp)->type_name("FILE");
    program.add_flag("--json", common.json, kJsonHelp);
    const std::string commonHelp = std::string("Options of all commands:\n  -a,--adapter FILE           ") +
                                   kAdapterHelp + "\n  --json                      " + kJsonHelp;

    std::vector<std::unique_ptr<Command>> commands;
    std::vector<std::string> names;
    Command* chosen = nullptr;
    for (const CommandRow& row : kCommands) {
        Command* const command = commands.emplace_back(row.make()).get();
        CLI::App* const self = program.add_subcommand(row.name, row.help);
        names.emplace_back(row.name);
        self->footer(commonHelp);
        command->declare(*self);
        self->callback([&chosen, command] { chosen = command; });
    }

    std::string topic;
    CLI::App* const help = program.add_subcommand("help", "Prints this help, or that of a command");
    help->add_option("COMMAND", topic, "Its name")->check(CLI::IsMember(names));

    const auto understand = [&] {
        const auto parsed = program.get_subcommands();
        request.command = parsed.empty() ? "" : parsed.front()->get_name();
    };
    try {
        program.parse(argc, argv);
        understand();
        request.isJson = common.json;
    } catch (const CLI::ParseError& error) {
        understand();
        // The parser may have given up before it came to the option.
        request.isJson = std::find(argv, argv + argc, std::string_view("--json")) != argv + argc;
        return answerParser(program, error, request, console);
    }
    if (help->parsed()) {
        // App::help() of the program would print the help of the command `help`.
        const CLI::App* const about = topic.empty() ? &program : program.get_subcommand(topic);
        answer(about->get_formatter()->make_help(about, about->get_name(), CLI::AppFormatMode::Normal),
               request, console);
        return ExitStatus::Fine;
    }
    if (!chosen) {
        console.fail(std::string("No command is given.") + kSeeHelp);
        return ExitStatus::WrongUsage;
    }
    return runCommand(*chosen, adapterPath, common, console);
}

/// Why the stream took no more, with a colon in front; empty if the system does not say.
std::string reasonOf(std::ostream& out)
{
    out.clear();
    errno = 0;   // may be another failure's by now: only one more try tells
    out.put('\n').flush();
    return errno == 0 ? "" : ": " + std::generic_category().message(errno);
}

}   // namespace

ExitStatus runCommandLine(int argc, const char* const* argv, Console& console)
{
    Request request;
    const ExitStatus status = parseAndRun(argc, argv, request, console);
    if (request.isJson)
        console.printJson({{"aikctl", AIKCTL_VERSION}, {"schema", kJsonSchema}, {"command", request.command}},
                          status);
    if (console.out().flush())
        return status;
    console.fail("Can't write the results to standard output" + reasonOf(console.out()));
    return status == ExitStatus::Fine ? ExitStatus::Failed : status;
}

}   // namespace orvo::aikctl

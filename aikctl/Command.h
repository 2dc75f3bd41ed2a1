#pragma once

namespace CLI   // NOLINT(readability-identifier-naming): the library's own name
{
class App;
}

namespace orvo::aikctl {

class Adapter;
class Console;

/// What all commands are told.
struct CommonOptions {
    bool json = false;   // results for programs, not for people
};

/// A command of the program. Declared once, then run at most once.
class Command {
public:
    virtual ~Command() = default;

    /// Adds the command with its options and its help.
    virtual CLI::App* declare(CLI::App& program) = 0;
    /// Does the work. Failures of single channels go to the console; one that ends all is thrown.
    virtual void run(const Adapter& adapter, const CommonOptions& common, Console& console) = 0;
};

}   // namespace orvo::aikctl

#pragma once

namespace orvo::aikctl {

/// How the program ended, for the shell. The same for all commands.
enum class ExitStatus {
    Fine = 0,            // also after Ctrl-C, where that is a command's normal end
    Failed = 1,          // the adapter refused something, or a check failed; the console said what
    WrongUsage = 2,      // the command line makes no sense
    NoAdapter = 3,       // the adapter, or a library that it needs, can't be loaded
    Interrupted = 130,   // what shells report for Ctrl-C
};

}   // namespace orvo::aikctl

#pragma once

namespace orvo::aikctl {

class Console;

// The exit codes of all commands.
inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;          // something failed, and the console said what
inline constexpr int kMisused = 2;         // the command line makes no sense
inline constexpr int kInterrupted = 130;   // what shells report for Ctrl-C

/// Runs the command that the arguments ask for; the first argument is the program's name. Returns the exit
/// code.
int runCommandLine(int argc, const char* const* argv, Console& console);

}   // namespace orvo::aikctl

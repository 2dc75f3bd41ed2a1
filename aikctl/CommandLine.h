#pragma once

namespace orvo::aikctl {

class Console;

inline constexpr int kDone = 0;
inline constexpr int kFailed = 1;          // something failed, and the console said what
inline constexpr int kMisused = 2;         // the command line makes no sense
inline constexpr int kInterrupted = 130;   // as shells have it for Ctrl-C

/// Runs the command that the arguments ask for, the program's name first. Returns the exit code.
int runCommandLine(int argc, const char* const* argv, Console& console);

}   // namespace orvo::aikctl

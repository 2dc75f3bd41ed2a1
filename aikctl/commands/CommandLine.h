#pragma once

#include "aikctl/console/ExitStatus.h"

namespace orvo::aikctl {

class Console;

/// Runs the command that the arguments ask for; the first argument is the program's name.
ExitStatus runCommandLine(int argc, const char* const* argv, Console& console);

}   // namespace orvo::aikctl

#pragma once

#include <string>

/// The part of the operating-system seam that only programs need: a library has no business with them. Callable
/// on any thread.
namespace orvo::os {

/// Sets what environmentVariable() of this process reads; an empty value removes the variable.
void setEnvironmentVariable(const std::string& name, const std::string& value);

/// From now on the first Ctrl-C, or the system's polite request to end, doesn't end the process but lets
/// interrupted() answer true. The second one ends it at once, with this exit status.
void catchInterrupts(int exitStatus);
bool interrupted();

/// Whether what is written to standard error reaches a person's terminal.
bool standardErrorIsTerminal();

}   // namespace orvo::os

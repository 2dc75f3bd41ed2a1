#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// The part of the operating-system seam that only programs need: a library has no business with them. Callable
/// on any thread.
namespace orvo::os {

/// Sets what environmentVariable() of this process reads; an empty value removes the variable.
void setEnvironmentVariable(const std::string& name, const std::string& value);

/// Has environmentVariable() read the whole variable. Wine 8 cuts it by a byte for every character beyond ASCII if
/// the code page is UTF-8; blanks at the end, which paths don't have, make up for that. Elsewhere this does nothing.
void mendEnvironmentVariable(const std::string& name);

/// From now on the first Ctrl-C, or the system's polite request to end, doesn't end the process but lets
/// interrupted() answer true. The second one ends it at once, with this exit status.
void catchInterrupts(int exitStatus);
bool interrupted();

/// From now on it is an error to write to a standard stream that nobody reads or that is closed, and no end of the
/// process; nor does a file that is opened later take the place of a closed one. Before any file is opened. On
/// Windows it is so anyway.
void guardStandardStreams();

/// Whether what is written to standard error reaches a person's terminal.
bool standardErrorIsTerminal();

/// How many characters fit into a line of the terminal that standard output reaches; 0 if it reaches none.
size_t standardOutputColumns();

/// While this lives, the terminal takes what the process writes for UTF-8, and gets it in pieces that are worth a
/// call. One at a time, made before the first output.
class Utf8Terminal {
public:
    Utf8Terminal();
    Utf8Terminal(const Utf8Terminal&) = delete;
    Utf8Terminal& operator=(const Utf8Terminal&) = delete;
    ~Utf8Terminal();   // NOLINT(performance-trivially-destructible): not under Windows

private:
    [[maybe_unused]] uint32_t m_before = 0;   // the code page that the terminal had
};

/// From now on standard output passes bytes on as they are, line ends too.
void makeStandardOutputBinary();

}   // namespace orvo::os

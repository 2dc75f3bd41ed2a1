#include <iostream>

#include "aikctl/commands/CommandLine.h"
#include "aikctl/console/Console.h"
#include "os/Program.h"

int main(int argc, char** argv)
{
    namespace os = orvo::os;
    os::guardStandardStreams();
    os::catchInterrupts(static_cast<int>(orvo::aikctl::ExitStatus::Interrupted));
    const os::Utf8Terminal terminal;
    orvo::aikctl::Console console(
        std::cout, std::cerr, {os::standardOutputColumns(), os::standardErrorIsTerminal()}, os::interrupted);
    return static_cast<int>(orvo::aikctl::runCommandLine(argc, argv, console));
}

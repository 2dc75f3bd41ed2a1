#include <iostream>

#include "aikctl/commands/CommandLine.h"
#include "aikctl/console/Console.h"
#include "os/Program.h"

int main(int argc, char** argv)
{
    namespace os = orvo::os;
    os::catchInterrupts();
    orvo::aikctl::Console console(std::cout, std::cerr, os::standardErrorIsTerminal(), os::interrupted);
    return orvo::aikctl::runCommandLine(argc, argv, console);
}

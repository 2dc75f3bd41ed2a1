#include "tests/aikctl/AikctlTest.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <vector>

#include "aikctl/commands/CommandLine.h"

namespace orvo::aikctl {

Outcome AikctlTest::run(const std::string& arguments, Terminals terminals) const
{
    std::istringstream line("aikctl " + arguments);
    const std::vector<std::string> words{std::istream_iterator<std::string>(line), {}};
    std::vector<const char*> argv(words.size());
    std::ranges::transform(words, argv.begin(), &std::string::c_str);
    std::ostringstream out;
    std::ostringstream err;
    Console console(out, err, terminals, [] { return false; });
    const ExitStatus status = runCommandLine(static_cast<int>(argv.size()), argv.data(), console);
    return {static_cast<int>(status), out.str(), err.str()};
}

std::string AikctlTest::textOf(const char* file)
{
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

}   // namespace orvo::aikctl

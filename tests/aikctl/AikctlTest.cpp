#include "tests/aikctl/AikctlTest.h"

#include <algorithm>
#include <iterator>
#include <sstream>

#include "aikctl/commands/CommandLine.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

Outcome AikctlTest::run(const std::string& arguments) const
{
    std::istringstream line("aikctl " + arguments);
    const std::vector<std::string> words{std::istream_iterator<std::string>(line), {}};
    std::vector<const char*> argv;
    for (const std::string& word : words)
        argv.push_back(word.c_str());
    std::ostringstream out;
    std::ostringstream err;
    Console console(out, err, false, [] { return false; });
    const int exitCode = runCommandLine(static_cast<int>(argv.size()), argv.data(), console);
    return {exitCode, out.str(), err.str()};
}

std::vector<std::string> AikctlTest::savedFiles() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(pictures()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

}   // namespace orvo::aikctl

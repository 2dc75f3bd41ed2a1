#include "tests/aikctl/AikctlTest.h"

#include <algorithm>
#include <sstream>

#include "aikctl/commands/CommandLine.h"
#include "aikctl/console/Console.h"

namespace orvo::aikctl {

Outcome AikctlTest::run(const std::vector<std::string>& arguments) const
{
    std::vector<const char*> argv = {"aikctl"};
    std::transform(arguments.begin(), arguments.end(), std::back_inserter(argv),
                   [](const std::string& argument) { return argument.c_str(); });
    std::ostringstream out;
    std::ostringstream err;
    Console console(out, err, false, m_isInterrupted);
    const int exitCode = runCommandLine(static_cast<int>(argv.size()), argv.data(), console);
    return {exitCode, out.str(), err.str()};
}

json AikctlTest::runForJson(std::vector<std::string> arguments) const
{
    arguments.emplace_back("--json");
    const Outcome outcome = run(arguments);
    EXPECT_EQ(outcome.exitCode, 0) << outcome.err;
    return json::parse(outcome.out);
}

Outcome AikctlTest::grab(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), {"grab", "--output", pictures().string()});
    return run(arguments);
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

#include "tests/aikctl/AikctlTest.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <sstream>

#include "aikctl/CommandLine.h"
#include "aikctl/Console.h"
#include "os/Os.h"
#include "sim/orvo_sim.h"

namespace orvo::aikctl {

namespace fs = std::filesystem;

namespace {

std::string appletVariable(int board)
{
    return "ORVO_COGNEX_APPLET_" + std::to_string(board);
}

void writeFile(const fs::path& path, const nlohmann::json& content)
{
    std::ofstream(path) << content;
}

}   // namespace

void AikctlTest::SetUp()
{
    const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
    m_folder = fs::temp_directory_path() /
               ("aikctl-test-" + std::to_string(now) + "-" + std::to_string(os::currentThreadId()));
    fs::create_directories(m_folder);
    OrvoSim_reset();
    OrvoSim_setMessages(0);
    os::setEnvironmentVariable("ORVO_SIM_BOARDS", "");
    noApplet(0);
    noApplet(1);
}

void AikctlTest::TearDown()
{
    std::error_code ignored;
    fs::remove_all(m_folder, ignored);
}

void AikctlTest::applet(int board, const nlohmann::json& applet) const
{
    const fs::path file = m_folder / ("board" + std::to_string(board) + ".hap");
    writeFile(file, applet);
    os::setEnvironmentVariable(appletVariable(board), file.string());
}

void AikctlTest::noApplet(int board)
{
    os::setEnvironmentVariable(appletVariable(board), "");
}

void AikctlTest::noBoards() const
{
    const fs::path file = m_folder / "boards.json";
    writeFile(file, {{"boards", nlohmann::json::array()}});
    os::setEnvironmentVariable("ORVO_SIM_BOARDS", file.string());
}

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

Outcome AikctlTest::grab(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), {"grab", "--output", pictures().string()});
    return run(arguments);
}

std::vector<std::string> AikctlTest::journal(const std::string& filter)
{
    std::string text(OrvoSim_readJournal(filter.c_str(), 0, nullptr, 0), '\0');
    OrvoSim_readJournal(filter.c_str(), 0, text.data(), text.size());
    std::istringstream stream(text.c_str());
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

std::vector<std::string> AikctlTest::savedFiles() const
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(pictures()))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

}   // namespace orvo::aikctl

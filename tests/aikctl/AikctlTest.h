#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "sim/orvo_sim.h"
#include "tests/support/Machine.h"
#include "tests/support/SimControl.h"

namespace orvo::aikctl {

using test::journal;

/// What a run of the program said and how it ended.
struct Outcome {
    int exitCode;
    std::string out;
    std::string err;

    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

/// The program run in this process, over two simulated boards whose applets the test chooses, with a folder
/// of its own.
class AikctlTest : public testing::Test {
protected:
    AikctlTest() { OrvoSim_setManual(0); }

    /// The applet of a board, 0 or 1.
    void applet(int board, const nlohmann::json& applet = nlohmann::json::object())
    {
        m_machine.applet(board, applet);
    }
    /// Takes the applet of a board away, so that its one channel fails.
    void noApplet(int board) { m_machine.appletVariable(board, ""); }
    void noBoards() { m_machine.boards({}); }

    Outcome run(const std::vector<std::string>& arguments) const;
    /// A grab into pictures().
    Outcome grab(std::vector<std::string> arguments) const;

    const std::filesystem::path& folder() const { return m_machine.folder(); }
    std::filesystem::path pictures() const { return folder() / "pictures"; }
    /// The names in pictures(), sorted.
    std::vector<std::string> savedFiles() const;

    /// Whether the person at the console has pressed Ctrl-C; false if not set.
    std::function<bool()> m_isInterrupted = [] { return false; };

private:
    test::Machine m_machine;
};

}   // namespace orvo::aikctl

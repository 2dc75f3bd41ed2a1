#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "sim/orvo_sim.h"
#include "tests/support/Machine.h"
#include "tests/support/Wheel.h"

namespace orvo::aikctl {

using nlohmann::json;
using test::journal;
using testing::HasSubstr;

/// What a run of the program said and how it ended.
struct Outcome {
    int exitCode;
    std::string out;
    std::string err;
};

/// The program, run in this process over simulated boards, with a folder of its own.
class AikctlTest : public testing::Test {
protected:
    AikctlTest() { OrvoSim_setManual(0); }

    /// The applet of a board, 0 or 1.
    void applet(int board, const json& applet = json::object()) { m_machine.applet(board, applet); }
    /// Takes the applet of a board away, so that its only channel fails.
    void noApplet(int board) { m_machine.appletVariable(board, ""); }

    Outcome run(const std::vector<std::string>& arguments) const;
    /// The JSON that the program prints; it must end well.
    json runForJson(std::vector<std::string> arguments) const;
    /// A grab into pictures().
    Outcome grab(std::vector<std::string> arguments) const;

    const std::filesystem::path& folder() const { return m_machine.folder(); }
    std::filesystem::path pictures() const { return folder() / "pictures"; }
    /// The names in pictures(), sorted.
    std::vector<std::string> savedFiles() const;

    /// Whether the user has pressed Ctrl-C.
    std::function<bool()> m_isInterrupted = [] { return false; };
    test::Machine m_machine;
};

}   // namespace orvo::aikctl

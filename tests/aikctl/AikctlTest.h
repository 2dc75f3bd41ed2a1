#pragma once

#include <filesystem>
#include <string>

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include "aikctl/console/Console.h"
#include "sim/orvo_sim.h"
#include "tests/support/Machine.h"

namespace orvo::aikctl {

using nlohmann::json;
using test::journal;
using testing::HasSubstr;

/// What a run of the program said and how it ended.
struct Outcome {
    int exitCode;
    std::string out;
    std::string err;

    nlohmann::json json() const { return nlohmann::json::parse(out); }
};

/// The program, run in this process over the two built-in boards, with a folder of its own. Board 0 has the
/// channels 0 and 1 and GigE Vision cameras, board 1 has channel 2.
class AikctlTest : public testing::Test {
protected:
    AikctlTest()
    {
        OrvoSim_setManual(0);
        applet(0, json::object());
        applet(1, json::object());
    }

    /// The applet of a board, 0 or 1.
    void applet(int board, const json& applet) { m_machine.applet(board, applet); }
    /// Takes the applet of a board away, so that its only channel fails with noAppletFailure().
    void noApplet(int board) { m_machine.appletVariable(board, ""); }
    static std::string noAppletFailure(int board)
    {
        return "ORVO_COGNEX_APPLET_" + std::to_string(board) + " is not a valid environment variable.";
    }

    /// Runs the program with these arguments, separated by blanks.
    Outcome run(const std::string& arguments, Terminals terminals = {}) const;
    /// A grab into pictures().
    Outcome grab(const std::string& arguments) const
    {
        return run("grab --output " + pictures().string() + " " + arguments);
    }

    /// The content of a file where the tests run.
    static std::string textOf(const char* file);

    const std::filesystem::path& folder() const { return m_machine.folder(); }
    std::filesystem::path pictures() const { return folder() / "pictures"; }

    test::Machine m_machine;
};

}   // namespace orvo::aikctl

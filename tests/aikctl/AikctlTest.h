#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace orvo::aikctl {

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
    void SetUp() override;
    void TearDown() override;

    /// The applet of a board, 0 or 1.
    void applet(int board, const nlohmann::json& applet = nlohmann::json::object()) const;
    /// Takes the applet of a board away, so that its one channel fails.
    static void noApplet(int board);
    void noBoards() const;

    Outcome run(const std::vector<std::string>& arguments) const;
    /// A grab into pictures().
    Outcome grab(std::vector<std::string> arguments) const;

    /// The lines of the simulator's journal; `filter` as it takes it.
    static std::vector<std::string> journal(const std::string& filter);

    const std::filesystem::path& folder() const { return m_folder; }
    std::filesystem::path pictures() const { return m_folder / "pictures"; }
    /// The names in pictures(), sorted.
    std::vector<std::string> savedFiles() const;

    /// Whether the person at the console has pressed Ctrl-C; false if not set.
    std::function<bool()> m_isInterrupted = [] { return false; };

private:
    std::filesystem::path m_folder;
};

}   // namespace orvo::aikctl

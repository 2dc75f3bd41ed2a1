#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace orvo::test {

using nlohmann::json;

/// The machine that a test describes: boards, the applet file of each, and the environment variables that name
/// these files. One at a time; a new one resets the simulator and has pictures delivered by hand.
class Machine {
public:
    Machine();
    Machine(const Machine&) = delete;
    Machine& operator=(const Machine&) = delete;
    ~Machine();

    /// A boards file with these entries. Without a call the simulator has its two built-in boards.
    void boards(const std::vector<json>& entries);
    /// Writes the applet file of a board and has the board's variable name it.
    void applet(int board, const json& applet, const std::string& fileName = "applet.hap");
    /// Sets the variable of a board; empty removes it.
    void appletVariable(int board, const std::string& value);
    /// Writes a file into the machine's folder, or into one below it, and returns its path.
    std::string file(const std::string& name, const std::string& content);

    const std::filesystem::path& folder() const { return m_folder; }

    /// One board, number 0, with an applet of one process.
    void oneBoard(const json& process);
    static json appletOf(const std::vector<json>& processes);
    static json process(const std::vector<json>& dmas);
    static json dma(int id = 0, int format = 3, int width = 8, int height = 4);
    static json grabber(int index, int type = 2897);

private:
    std::filesystem::path m_folder;
};

using Lines = std::vector<std::string>;

/// The journal of the closed libraries from line `from` on; `filter` as OrvoSim_readJournal() takes it.
Lines journal(const std::string& filter = "", uint64_t from = 0);

/// All lines so far, which the journal then forgets.
Lines takeJournal(const std::string& filter = "");

/// Has the board deliver so many pictures on this thread. All of them must find a block.
void deliver(uint32_t count, uint32_t dma = 0, uint32_t board = 0);

}   // namespace orvo::test

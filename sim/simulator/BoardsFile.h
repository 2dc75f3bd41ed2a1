#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "sim/seam/Core.h"
#include "sim/simulator/Script.h"
#include "sim/simulator/SimulatedCamera.h"

namespace orvo::sim {

/// What the file that ORVO_SIM_BOARDS names says: the boards, their faults, and what to write at the end.
struct BoardsFile {
    static constexpr size_t kMostBoards = 8;

    struct ScriptedCall {
        std::string call;
        uint32_t nth = 1;
        Script::Order order;
    };

    std::array<std::optional<BoardDescription>, kMostBoards> boards;
    std::array<std::vector<CameraDescription>, kMostBoards> cameras;   // one a port
    std::vector<ScriptedCall> script;
    std::filesystem::path ledgerPath;    // empty: not written
    std::filesystem::path journalPath;   // empty: not written
    bool isQuiet = false;

    /// One board of each camera family, with a camera at each port that an applet without more has.
    static BoardsFile builtIn();
    /// Throws JsonError with what is wrong and where.
    static BoardsFile read(const std::string& path);
};

}   // namespace orvo::sim

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "sim/brdlib5/brdlib5.h"
#include "sim/orvo_sim.h"
#include "tests/sim/PictureRecorder.h"
#include "tests/sim/Ring.h"
#include "tests/support/Machine.h"
#include "tests/support/SimControl.h"

namespace orvo::test {

/// Bounds every wait; only a test that fails takes so long.
inline constexpr uint32_t kGenerousMs = 60'000;

/// The library before its first call, with boards of the built-in types but without cameras unless a test
/// describes others. Pictures come by themselves. Ends every life that a test began.
class SimulatedBoards : public ::testing::Test {
protected:
    SimulatedBoards();
    ~SimulatedBoards() override;

    /// The boards file, for lives that begin after it.
    void describeBoards(std::string_view text);
    void describeNothing();
    void beginLife();
    void endLife();

    /// Opens a board with an applet of that description, beginning a life if there is none.
    void* open(uint32_t boardIndex, std::string_view appletJson);
    std::string lastError(void* board = nullptr) const;
    uint32_t parameter(void* board, int32_t id, uint32_t dma = 0) const;
    std::string property(void* board, int32_t id, int32_t code) const;

    static OrvoSim_Ledger ledger(uint32_t boardIndex, uint32_t dma);

    Machine machine;

private:
    bool m_inLife = false;
};

}   // namespace orvo::test

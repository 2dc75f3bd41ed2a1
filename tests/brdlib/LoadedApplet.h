#pragma once

#include <memory>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "brdlib/AppletLoader.h"
#include "brdlib/AppletProcess.h"
#include "brdlib/AppletWrapper.h"
#include "brdlib/BoardWrapper.h"
#include "brdlib/binding/BrdFunctions.h"
#include "sim/orvo_sim.h"
#include "tests/support/LibraryUse.h"
#include "tests/support/Machine.h"

namespace orvo::test {

/// A simulated board, number 0, with the applet that a test describes. The test delivers its pictures by hand.
class LoadedApplet : public testing::Test {
protected:
    ~LoadedApplet() override
    {
        if (!board)
            return;
        board.reset();
        cognex::Brd_FreeLibraries();
    }

    void load(const json& applet, const json& grabber = Machine::grabber(0))
    {
        machine.boards({grabber});
        machine.applet(0, applet);
        cognex::Brd_InitLibraries(nullptr);
        board = cognex::BoardWrapper::create(0);
        board->setApplet(cognex::chooseLoader(board)->load());
        OrvoSim_clearJournal();
    }

    cognex::AppletProcess& process() const { return *board->applet()->processes().front(); }

    Machine machine;
    LibraryUse m_use;
    std::shared_ptr<cognex::BoardWrapper> board;
};

}   // namespace orvo::test

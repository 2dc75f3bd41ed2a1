#include <gtest/gtest.h>

#include "acquisition/AcquisitionEngine.h"
#include "acquisition/buffers/Buffer.h"
#include "brdlib/DmaPort.h"
#include "tests/brdlib/LoadedApplet.h"
#include "tests/support/Failures.h"

namespace orvo::test {

namespace {

using CurrentPicture = LoadedApplet;

// A copy that takes long, on a thread of its own, is what keeps the buffer: no host can time that.
TEST_F(CurrentPicture, GoesWithItsRingThoughSomebodyStillReadsIt)
{
    load(Machine::appletOf({Machine::process({Machine::dma()})}));
    cognex::AcquisitionEngine engine;
    const auto port = process().dmaPortAt(0).lock();
    engine.setDmaPort(port);
    port->setObserver(&engine);
    port->setup();
    port->start();
    deliver(1);
    port->stop();
    const auto read = cognex::locked(engine.peekImage());
    OrvoSim_answer("Brd_AllocMemHead", 1, -34);
    EXPECT_EQ(aikFailure([&] { port->setup(); }), "brd error code: -34");
    EXPECT_EQ(pending([&] { engine.peekImage(); }), "No image arrived within the given timeout.");
    port->setObserver(nullptr);
}

}   // namespace

}   // namespace orvo::test

// What lies between the exports and the board library, where no host gets through to it.
#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "AIKException.h"
#include "acquisition/AcquisitionEngine.h"
#include "acquisition/buffers/Buffer.h"
#include "brdlib/AppletLoader.h"
#include "brdlib/DmaObserver.h"
#include "brdlib/DmaPort.h"
#include "tests/brdlib/LoadedApplet.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"

namespace orvo::test {

namespace {

using namespace cognex;
using testing::ElementsAre;

// Whoever chooses the loader forgets why the others refused.
TEST(Loaders, NameTheKindOfFileThatTheyMiss)
{
    EXPECT_NE(kDllLoader.create("/Dlls/applet.bin", {}), nullptr);
    EXPECT_EQ(aikFailure([] { kDllLoader.create("applet.hap", {}); }), "Path does not refer a dll applet.");
    EXPECT_EQ(aikFailure([] { kHapLoader.create("applet.dll", {}); }), "Path does not refer to a hap file!");
    EXPECT_EQ(aikFailure([] { kMcfLoader.create("mcf/applet", {}); }),
              "Given path does not refer an mcf file!");
}

/// An applet with the DMAs 4 and 7.
class Applet : public LoadedApplet {
protected:
    Applet() { load(Machine::appletOf({Machine::process({Machine::dma(4), Machine::dma(7)})})); }

    std::shared_ptr<DmaPort> first() const { return locked(process().dmaPortAt(0)); }
};

// Hosts see the offset 0 instead.
TEST_F(Applet, NamesTheOffsetThatTheBoardRefusesAndLeavesMissingTextsEmpty)
{
    OrvoSim_answer("Brd_getParameter", 0, -1);
    EXPECT_EQ(bareFailure([&] { first()->xOffset(); }), "Cannot get BRD_FORMAT");
    EXPECT_EQ(bareFailure([&] { first()->yOffset(); }), "Cannot get BRD_YOFFSET");
    OrvoSim_answer("Brd_getBoardNameByType", 1, 0);
    EXPECT_EQ(board->boardName(), "");
    OrvoSim_answer("Brd_getSystemInformation code=1012", 1, -1);
    EXPECT_EQ(board->boardText(), "");
}

TEST_F(Applet, StopsStartingAtTheFirstDmaThatFails)
{
    process().setupAll();
    OrvoSim_answer("Brd_AcquireEx dma=7", 1, -9);
    EXPECT_EQ(aikFailure([&] { process().start(); }), "brd error code: -9");
    EXPECT_TRUE(first()->isRunning());
    EXPECT_FALSE(locked(process().dmaPortById(7))->isRunning());
    EXPECT_TRUE(process().dmaPortById(1).expired());
    EXPECT_EQ(aikFailure([&] { process().stop(); }), "Acquisition is not running");
    EXPECT_FALSE(first()->isRunning());

    const auto empty = AppletProcess::create(0, board->applet()->handle());
    EXPECT_EQ(bareFailure([&] { empty->start(); }), "No dma created!");
    EXPECT_NO_THROW(empty->stop());
}

TEST_F(Applet, SetsTheGeometryOfAllItsDmas)   // hosts set that of one channel
{
    process().setWidth(16);
    process().setHeight(2);
    process().setXOffset(3);
    process().setYOffset(1);
    Lines calls;
    for (const std::string value : {"id=100 value=16", "id=200 value=2", "id=300 value=3", "id=400 value=1"})
        for (const char* const dma : {" dma=4 -> 0", " dma=7 -> 0"})
            calls.push_back("Brd_setParameter board=0 " + value + dma);
    EXPECT_EQ(journal("Brd_setParameter"), calls);
}

struct FailingObserver : DmaObserver {
    void newBuffer(std::weak_ptr<Buffer> buffer) override
    {
        told.push_back(buffer.lock()->number());
        throw std::runtime_error("refused");
    }
    void acquisitionError(int64_t code) override { told.push_back(code); }
    void buffersGone() override {}
    void buffersChanged() override {}

    std::vector<int64_t> told;
};

TEST_F(Applet, ReportsPicturesAndErrorsToAnObserverIfItHasOne)
{
    FailingObserver observer;
    first()->setObserver(&observer);
    process().setupAll();
    process().start();
    deliver(2, 4);
    OrvoSim_callBack(0, 4, -2120);
    EXPECT_THAT(observer.told, ElementsAre(0, 1, -2120));
    EXPECT_NE(first()->buffers()[0]->timestamp(), first()->buffers()[1]->timestamp());
    first()->setObserver(nullptr);
    deliver(1, 4);
    OrvoSim_callBack(0, 4, -2120);
    EXPECT_EQ(reading(*first()->getFeatures().lock(), "FrameCountSinceLastStart"), "3");
}

// A copy that takes long, on a thread of its own, is what keeps the buffer: no host can time that.
TEST_F(Applet, HasAPictureThatGoesWithItsRingThoughSomebodyStillReadsIt)
{
    AcquisitionEngine engine;
    const auto port = first();
    engine.setDmaPort(port);
    port->setObserver(&engine);
    port->setup();
    port->start();
    deliver(1, 4);
    port->stop();
    const auto read = locked(engine.peekImage());
    OrvoSim_answer("Brd_AllocMemHead", 1, -34);
    EXPECT_EQ(aikFailure([&] { port->setup(); }), "brd error code: -34");
    EXPECT_EQ(pending([&] { engine.peekImage(); }), "No image arrived within the given timeout.");
    port->setObserver(nullptr);
}

}   // namespace

}   // namespace orvo::test

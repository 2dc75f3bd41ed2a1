#include "brdlib/DmaPort.h"

#include <stdexcept>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "acquisition/buffers/Buffer.h"
#include "brdlib/DmaObserver.h"
#include "tests/brdlib/LoadedApplet.h"
#include "tests/features/FeatureAccess.h"
#include "tests/support/Failures.h"

using namespace orvo::cognex;
using orvo::test::bareFailure;
using orvo::test::Machine;
using testing::ElementsAre;

namespace {

/// The only DMA of a board, 8 x 4 pixels, and what it tells of its pictures and its ring.
class Port : public orvo::test::LoadedApplet, public DmaObserver {
protected:
    Port()
    {
        load(Machine::appletOf({Machine::process({Machine::dma()})}));
        port = process().dmaPortAt(0).lock();
        port->setObserver(this);
    }
    ~Port() override
    {
        port->setObserver(nullptr);
        port.reset();
    }

    void newBuffer(std::weak_ptr<Buffer> buffer) override
    {
        buffers.push_back(buffer.lock()->number());
        if (refuses)
            throw std::runtime_error("refused");
    }
    void acquisitionError(int64_t code) override { errors.push_back(code); }
    void buffersGone() override {}
    void buffersChanged() override {}

    std::string frameCount() const
    {
        return orvo::test::reading(*port->getFeatures().lock(), "FrameCountSinceLastStart");
    }

    std::shared_ptr<DmaPort> port;
    std::vector<int64_t> buffers;
    std::vector<int64_t> errors;
    bool refuses = false;
};

// Hosts see the offset 0 in the place of these.
TEST_F(Port, SaysWhichOffsetTheBoardRefuses)
{
    OrvoSim_answer("Brd_getParameter", 0, -1);
    EXPECT_EQ(bareFailure([&] { port->xOffset(); }), "Cannot get BRD_FORMAT");
    EXPECT_EQ(bareFailure([&] { port->yOffset(); }), "Cannot get BRD_YOFFSET");
}

TEST_F(Port, FormsTheSizeOfABlockIn32Bits)
{
    const uint32_t wide = 0x4000'0001;
    OrvoSim_answerWith("Brd_getParameter id=100", 1, 0, &wide, sizeof wide);
    port->setup();
    EXPECT_EQ(port->buffers().front()->size(), 4u);
}

TEST_F(Port, HandsOnPicturesAndErrorsAndLetsNoFailureOut)
{
    OrvoSim_callBack(0, 0, 1);
    port->setup();
    port->start();
    OrvoSim_deliver(0, 0, 2);
    OrvoSim_callBack(0, 0, -2120);
    refuses = true;
    OrvoSim_deliver(0, 0, 1);
    EXPECT_THAT(buffers, ElementsAre(0, 1, 2));
    EXPECT_THAT(errors, ElementsAre(-2120));
    EXPECT_EQ(frameCount(), "3");
    EXPECT_NE(port->buffers()[1]->timestamp(), port->buffers()[0]->timestamp());

    port->setObserver(nullptr);
    OrvoSim_deliver(0, 0, 1);
    OrvoSim_callBack(0, 0, -2120);
    EXPECT_EQ(frameCount(), "4");
    EXPECT_THAT(errors, ElementsAre(-2120));
}

}   // namespace

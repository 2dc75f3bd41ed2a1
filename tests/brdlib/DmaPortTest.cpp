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
using orvo::test::aikFailure;
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
    void buffersChanged() override { ++rings; }

    /// In bytes, of a ring that is built while the board gives this answer.
    uint64_t blockSizeWith(const char* call, uint32_t answer)
    {
        OrvoSim_answerWith(call, 1, 0, &answer, sizeof answer);
        port->setup();
        return port->buffers().front()->size();
    }

    std::string frameCount() const
    {
        return orvo::test::reading(*port->getFeatures().lock(), "FrameCountSinceLastStart");
    }

    std::shared_ptr<DmaPort> port;
    std::vector<int64_t> buffers;
    std::vector<int64_t> errors;
    int rings = 0;
    bool refuses = false;
};

// Hosts see some of these, and the offset 0 in the place of others.
TEST_F(Port, SaysWhichPartOfTheGeometryTheBoardRefuses)
{
    OrvoSim_answer("Brd_getParameter", 0, -1);
    OrvoSim_answer("Brd_setParameter", 0, 1);
    EXPECT_EQ(bareFailure([&] { port->width(); }), "Cannot get BRD_WIDTH");
    EXPECT_EQ(bareFailure([&] { port->setWidth(8); }), "Cannot set BRD_WIDTH");
    EXPECT_EQ(bareFailure([&] { port->height(); }), "Cannot get BRD_HEIGHT");
    EXPECT_EQ(bareFailure([&] { port->setHeight(8); }), "Cannot set BRD_HEIGHT");
    EXPECT_EQ(bareFailure([&] { port->format(); }), "Cannot get BRD_FORMAT");
    EXPECT_EQ(bareFailure([&] { port->xOffset(); }), "Cannot get BRD_FORMAT");
    EXPECT_EQ(bareFailure([&] { port->setXOffset(8); }), "Cannot set BRD_XOFFSET");
    EXPECT_EQ(bareFailure([&] { port->yOffset(); }), "Cannot get BRD_YOFFSET");
    EXPECT_EQ(bareFailure([&] { port->setYOffset(8); }), "Cannot set BRD_YOFFSET");
}

TEST_F(Port, MakesBlocksOfAllBytesOfAnImage)
{
    const char* const format = "Brd_getParameter id=700";
    EXPECT_EQ(blockSizeWith(format, 1), 2u * 8 * 4);
    EXPECT_EQ(blockSizeWith(format, 2), 3u * 8 * 4);
    EXPECT_EQ(blockSizeWith(format, 3), 1u * 8 * 4);
    EXPECT_EQ(blockSizeWith(format, 4), 4u * 8 * 4);
    EXPECT_EQ(blockSizeWith(format, 5), 5u * 8 * 4);
    EXPECT_EQ(blockSizeWith(format, 6), 6u * 8 * 4);
    EXPECT_EQ(blockSizeWith(format, 7), 1u * 8 * 4);
    EXPECT_EQ(blockSizeWith("Brd_getParameter id=100", 0), 0u);
    EXPECT_EQ(blockSizeWith("Brd_getParameter id=100", 0x4000'0001), 4u);   // formed in 32 bits
    EXPECT_EQ(rings, 9);
}

TEST_F(Port, TellsNobodyOfARingThatTheBoardRefuses)
{
    OrvoSim_answer("Brd_AddMem index=2", 1, -5);
    EXPECT_EQ(aikFailure([&] { port->setup(); }), "brd error code: -5");
    EXPECT_EQ(rings, 0);
    EXPECT_EQ(port->buffers().size(), 3u);   // what was made stays
    port->setup();
    EXPECT_EQ(rings, 1);
    EXPECT_EQ(port->buffers().size(), 5u);
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

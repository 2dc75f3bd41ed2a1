#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "sim/orvo_sim.h"
#include "tests/support/Machine.h"
#include "tests/system/Host.h"

namespace orvo::test {

/// A host, and a machine that the test describes before it opens the first channel. Pictures come when the
/// test delivers them.
class SystemTest : public testing::Test {
protected:
    /// The number of a picture whose source is "numbers".
    static uint64_t numberIn(const std::string& image)
    {
        uint64_t number = 0;
        for (size_t i = 8; i-- > 0;)
            number = number << 8 | static_cast<unsigned char>(image[i]);
        return number;
    }

    Machine machine;
    Host host;
};

/// One board with one channel, which is open and set up: 8 x 4 pixels, 8-bit grey, five buffers.
class OneChannel : public SystemTest {
protected:
    static constexpr uint32_t kWidth = 8;
    static constexpr uint32_t kHeight = 4;
    static constexpr size_t kImageSize = size_t{kWidth} * kHeight;

    OneChannel()
    {
        json dma = Machine::dma();
        dma["source"] = "numbers";
        machine.oneBoard(Machine::process({dma}));
        id = host.opened(0);
        EXPECT_EQ(host.setup(id, kWidth, kHeight), done());
    }

    /// The number of the picture that the host fetches next; each picture holds its own.
    uint64_t fetchNumber() { return numberIn(host.fetch(id, kImageSize)); }

    int64_t id = 0;
};

}   // namespace orvo::test

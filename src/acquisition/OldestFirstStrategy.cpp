#include "acquisition/OldestFirstStrategy.h"

#include <string>

#include "AIKException.h"
#include "brdlib/DmaPort.h"
#include "brdlib/binding/BrdFunctions.h"
#include "brdlib/binding/checkBrd.h"

namespace orvo::cognex {

namespace {

constexpr int32_t kStatusLostPictures = 30;

}   // namespace

void OldestFirstStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    const auto queues = access();
    // Without a free buffer the image is left alone: the board counts what it loses, and getImage() tells.
    if (!queues->freeQueue()->isEmpty())
        queues->publish(buffer);
}

std::weak_ptr<Buffer> OldestFirstStrategy::getImage(Ticks timeout)
{
    const int32_t lost = lostImages();
    if (lost >= 1)
        throw AIKException(std::to_string(lost) + " images lost due buffer overflow");
    return AcquisitionStrategy::getImage(timeout);
}

int32_t OldestFirstStrategy::lostImages() const
{
    const auto port = locked(m_dmaPort);
    const int64_t answer = Brd_getStatusEx(port->boardHandle(), kStatusLostPictures, 0,
                                           static_cast<uint32_t>(port->dmaIndex()), port->memoryHead());
    if (answer < 0)
        throwBrdError(answer);
    return static_cast<int32_t>(answer);
}

}   // namespace orvo::cognex

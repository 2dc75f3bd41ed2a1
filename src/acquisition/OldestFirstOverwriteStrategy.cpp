#include "acquisition/OldestFirstOverwriteStrategy.h"

namespace orvo::cognex {

void OldestFirstOverwriteStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    const auto queues = access();
    queues->publish(buffer);
    if (queues->freeQueue()->isEmpty())
        queues->recycleOldestReady();
}

}   // namespace orvo::cognex

#include "acquisition/NewestOnlyStrategy.h"

namespace orvo::cognex {

void NewestOnlyStrategy::newBuffer(const std::weak_ptr<Buffer>& buffer)
{
    const auto queues = access();
    queues->recycleAllReady();
    queues->publish(buffer);
}

}   // namespace orvo::cognex

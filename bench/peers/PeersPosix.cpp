#include <glib.h>
#include <libyuv.h>

#include "bench/peers/Peers.h"

namespace orvo::bench {

namespace {

HandOff asynchronousQueue()
{
    const std::shared_ptr<GAsyncQueue> queue(g_async_queue_new(), g_async_queue_unref);
    return {"GLib GAsyncQueue", [queue] { g_async_queue_push(queue.get(), queue.get()); },
            [queue] { g_async_queue_pop(queue.get()); }};
}

void splitByLibyuv(uint8_t* planes, const uint8_t* packed, size_t pixels)
{
    const auto width = static_cast<int>(pixels);
    libyuv::SplitRGBPlane(packed, 3 * width, planes + 2 * pixels, width, planes + pixels, width, planes,
                          width, width, 1);
}

}   // namespace

std::vector<HandOff> handOffPeers()
{
    return {handOffOver<std::mutex, StandardCondition>("std::mutex, condition"), asynchronousQueue()};
}

std::vector<Split> splitPeers()
{
    return {{"libyuv SplitRGBPlane", splitByLibyuv}};
}

}   // namespace orvo::bench

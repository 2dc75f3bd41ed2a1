#include <stdexcept>
#include <thread>

#include <arv.h>
#include <libyuv.h>

#include "bench/peers/Peers.h"

/// GLib's own would have the source of Aravis's pictures wait for the next one's time.
extern "C" void g_usleep(gulong /*microseconds*/)
{
    std::this_thread::yield();
}

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

/// Aravis's camera without a device, whose stream has a thread of its own, and which leaves the pictures empty.
class AravisStream {
public:
    explicit AravisStream(uint32_t side)
    {
        arv_enable_interface("Fake");
        m_device = arv_open_device("Fake_1", nullptr);
        if (!m_device)
            throw std::runtime_error("Aravis has no camera");
        ArvFakeCamera* const camera = arv_fake_device_get_fake_camera(ARV_FAKE_DEVICE(m_device));
        arv_fake_camera_set_fill_pattern(
            camera, [](ArvBuffer*, void*, guint32, guint32, ArvPixelFormat) {}, nullptr);
        arv_fake_camera_write_register(camera, ARV_FAKE_CAMERA_REGISTER_WIDTH, side);
        arv_fake_camera_write_register(camera, ARV_FAKE_CAMERA_REGISTER_HEIGHT, side);
        arv_fake_camera_write_register(camera, ARV_FAKE_CAMERA_REGISTER_ACQUISITION_FRAME_PERIOD_US, 1);
        m_stream = arv_device_create_stream(m_device, nullptr, nullptr, nullptr);
        for (int i = 0; i < kBuffers; ++i)
            arv_stream_push_buffer(m_stream, arv_buffer_new(arv_fake_camera_get_payload(camera), nullptr));
    }
    AravisStream(const AravisStream&) = delete;
    AravisStream& operator=(const AravisStream&) = delete;
    ~AravisStream()
    {
        g_object_unref(m_stream);
        g_object_unref(m_device);
    }

    void pass(uint64_t pictures)
    {
        arv_device_execute_command(m_device, "AcquisitionStart", nullptr);
        for (; pictures > 0; --pictures)
            arv_stream_push_buffer(m_stream, arv_stream_pop_buffer(m_stream));
        arv_device_execute_command(m_device, "AcquisitionStop", nullptr);
    }

private:
    static constexpr int kBuffers = 5;   // as a ring has

    ArvDevice* m_device = nullptr;
    ArvStream* m_stream = nullptr;
};

}   // namespace

std::vector<HandOff> handOffPeers()
{
    return {handOffOver<std::mutex, StandardCondition>("std::mutex, condition"), asynchronousQueue()};
}

std::vector<Split> splitPeers()
{
    return {{"libyuv SplitRGBPlane", splitByLibyuv}};
}

std::vector<Flow> flowPeers(uint32_t side)
{
    const auto stream = std::make_shared<AravisStream>(side);
    return {{"Aravis, its stream's thread", [stream](uint64_t pictures) { stream->pass(pictures); }}};
}

}   // namespace orvo::bench

#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

#include "brdlib/DmaObserver.h"
#include "features/AdapterFeature.h"
#include "features/BasicFeatures.h"
#include "features/FeatureContainer.h"
#include "tools/logging/Logging.h"

namespace orvo::cognex {

class Buffer;
class DmaObserver;

/// Our end of one DMA channel: builds the ring, starts and stops the transfer, hands each picture on, and
/// decides nothing.
/// Threads: acquisitionCallback() on the callback thread, unblockBuffer() on either, the rest on host threads.
///          No lock of its own: the ring and its map change only while the transfer is stopped, and setup() must
///          not overlap start() or stop().
/// Owns:    every Buffer of the ring; all others hold weak pointers, and setup() expires them at once.
/// Throws:  AIKException "brd error code: N" from ring and transfer, runtime_error from the geometry.
class DmaPort final : public AcqCallbackObserver {
public:
    /// A board that doesn't tell its frequency makes a port without "TimestampFrequency".
    DmaPort();
    DmaPort(const DmaPort&) = delete;
    DmaPort& operator=(const DmaPort&) = delete;
    /// Stops, takes the blocks back from the board, and drops every failure.
    ~DmaPort();

    // Set once, by the maker and by the builder of the channel.
    void setBoardHandle(void* handle) { m_boardHandle = handle; }
    void setDmaIndex(int32_t index) { m_dmaIndex = index; }
    /// Not owned. It must live until the port has stopped for good.
    void setObserver(DmaObserver* observer) { m_observer = observer; }

    void* boardHandle() const { return m_boardHandle; }
    /// The number of the DMA at the board; -1 until set.
    int32_t dmaIndex() const { return m_dmaIndex; }
    void* memoryHead() const { return m_memoryHead; }
    bool isRunning() const { return m_running.load(std::memory_order_acquire); }
    const std::vector<std::shared_ptr<Buffer>>& buffers() const { return m_ring; }
    std::weak_ptr<FeatureContainer> getFeatures() const { return m_features; }

    // The image geometry, in pixels: straight from the board and to it, nothing is kept here.
    uint32_t width() const;
    void setWidth(uint32_t width);
    uint32_t height() const;
    void setHeight(uint32_t height);
    uint32_t xOffset() const;
    void setXOffset(uint32_t offset);
    uint32_t yOffset() const;
    void setYOffset(uint32_t offset);
    /// The board's number of the pixel format.
    uint32_t format() const;

    /// Rebuilds the ring from the board's geometry and "BufferCount". A running port is stopped first and
    /// started again; after a failure on the way it stays stopped.
    void setup();
    /// Does nothing on a running port.
    void start();
    /// A port whose board refuses to stop still counts as running.
    void stop();
    /// Gives the block back to the board. The caller holds the lock of the channel's buffers.
    void unblockBuffer(const Buffer& buffer);

    /// Lets no std::exception out: the board has no use for it.
    void acquisitionCallback(int64_t pictureNumber) override;

    tools::logging::Logger* getLogger() { return m_logger.get(); }

private:
    uint32_t dmaArgument() const { return static_cast<uint32_t>(m_dmaIndex); }
    uint32_t parameter(int32_t id, const char* failure) const;
    void setParameter(int32_t id, uint32_t value, const char* failure);
    void addTimestampFrequency();
    void rebuildRing();
    void allocate(uint64_t count, uint64_t size);
    void freeRing();
    void receive(int64_t pictureNumber);

    // Set once.
    void* m_boardHandle = nullptr;
    int32_t m_dmaIndex = -1;
    DmaObserver* m_observer = nullptr;

    // Host threads; read by the callback thread while the transfer runs.
    void* m_memoryHead = nullptr;
    std::vector<std::shared_ptr<Buffer>> m_ring;
    std::unordered_map<void*, std::shared_ptr<Buffer>> m_bufferByAddress;
    std::array<void*, 5> m_callbackData{};   // for the library to hand back; the last word is ours

    // Any thread.
    std::atomic<bool> m_running{false};
    tools::logging::CachedLogger m_logger{"orvo.Cognex.DmaPort"};

    // Host threads, but for the value of the frame counter.
    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<NumberFeature<unsigned long long>> m_bufferCount;
    std::shared_ptr<FeatureObserverCallback> m_bufferCountObserver;
    std::shared_ptr<NumberFeature<unsigned long long>> m_frameCount;
};

/// Throws AIKException if the port has gone.
std::shared_ptr<DmaPort> locked(const std::weak_ptr<DmaPort>& port);

}   // namespace orvo::cognex

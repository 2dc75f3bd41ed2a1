#pragma once

#include <cstdint>
#include <memory>

#include "acquisition/buffers/BufferCoordinator.h"
#include "brdlib/DmaObserver.h"
#include "features/AdapterFeature.h"
#include "features/EnumerationFeature.h"
#include "features/FeatureContainer.h"

namespace orvo::cognex {

class AcquisitionStrategy;
class DmaPort;
class PixelTransformation;

/// The acquisition of one channel, between its DMA port and the host: the queues, the strategy and the
/// transformation in force, the features that choose these, and the host's image calls.
/// Threads: newBuffer() and acquisitionError() on the callback thread, the rest on host threads. Strategy and
///          transformation are replaced without a lock, and only while the port is stopped: the host must not
///          write the two features during its image calls.
/// Throws:  Pending while there is no image.
class AcquisitionEngine : public DmaObserver {
public:
    AcquisitionEngine();
    AcquisitionEngine(const AcquisitionEngine&) = delete;
    AcquisitionEngine& operator=(const AcquisitionEngine&) = delete;
    ~AcquisitionEngine() override;

    /// Set once, by the builder of the channel, who makes this the port's observer too.
    void setDmaPort(std::weak_ptr<DmaPort> dmaPort) { m_dmaPort = std::move(dmaPort); }
    std::weak_ptr<FeatureContainer> getFeatures() const { return m_features; }

    void newBuffer(std::weak_ptr<Buffer> buffer) override;
    void acquisitionError(int64_t code) override;
    void buffersGone() override;
    void buffersChanged() override;

    // Each waits up to 7 ms for an image; the host asks again.
    void waitForIntegration();
    /// The image that getImage() would fetch. It stays current.
    std::weak_ptr<Buffer> peekImage();
    /// Fetches an image into memory that must hold all of its bytes, then gives its buffer back to the board.
    void getImage(void* destination);

    bool hasFreeBuffers();
    /// Whether the planar transformation is chosen.
    bool isPlanar() const;

private:
    bool isRunning() const;
    void applyStrategy();
    void applyTransformation();

    std::weak_ptr<DmaPort> m_dmaPort;
    std::shared_ptr<BufferCoordinator> m_coordinator;
    // What is in force, and its value in the feature.
    std::shared_ptr<AcquisitionStrategy> m_strategy;
    int32_t m_strategyValue = 0;
    std::shared_ptr<PixelTransformation> m_transformation;
    int32_t m_transformationValue = 0;

    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<EnumerationFeature> m_strategyFeature;
    std::shared_ptr<FeatureObserverCallback> m_strategyObserver;
    std::shared_ptr<EnumerationFeature> m_transformationFeature;
    std::shared_ptr<FeatureObserverCallback> m_transformationObserver;
};

}   // namespace orvo::cognex

#pragma once

#include <memory>
#include <string>

namespace orvo::cognex {

class AcquisitionEngine;
class AppletProcess;
class BoardWrapper;
class DmaPort;
class FeatureContainer;

/// What the host sees as one camera stream: one DMA of one applet process of one board. Hands out what serves
/// the stream; lock a pointer for the time of one use.
/// Threads: host.
class VideoChannel {
public:
    virtual ~VideoChannel() = default;

    virtual std::weak_ptr<DmaPort> dmaPort() const = 0;
    virtual std::weak_ptr<AppletProcess> appletProcess() const = 0;
    virtual std::weak_ptr<BoardWrapper> board() const = 0;
    virtual std::weak_ptr<AcquisitionEngine> acquisitionEngine() const = 0;
    virtual std::string name() const = 0;
    /// Whether the channel works.
    virtual bool isValid() const = 0;
    virtual std::weak_ptr<FeatureContainer> features() const = 0;
};

}   // namespace orvo::cognex

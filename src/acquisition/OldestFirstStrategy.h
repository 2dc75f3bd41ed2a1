#pragma once

#include "acquisition/AcquisitionStrategy.h"

namespace orvo::cognex {

class DmaPort;

/// The host sees every image, oldest first, and hears of those that the board had no buffer for: getImage()
/// then throws AIKException "N images lost due buffer overflow", until the board counts anew.
class OldestFirstStrategy : public AcquisitionStrategy {
public:
    /// Comes right after construction.
    void setDmaPort(std::weak_ptr<DmaPort> dmaPort) { m_dmaPort = std::move(dmaPort); }

    void newBuffer(const std::weak_ptr<Buffer>& buffer) override;
    std::weak_ptr<Buffer> getImage(Ticks timeout) override;

private:
    int32_t lostImages() const;

    std::weak_ptr<DmaPort> m_dmaPort;
};

}   // namespace orvo::cognex

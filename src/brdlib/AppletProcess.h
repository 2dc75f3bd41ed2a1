#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "features/FeatureContainer.h"

namespace orvo::cognex {

class DmaPort;

/// One process of an applet: the unit that starts and stops as a whole.
/// Threads: host, no lock.
/// Owns:    its DMA ports. The applet's handle is the applet's and outlives this.
class AppletProcess {
public:
    /// `index` is the process's number at the board. Makes no port yet.
    static std::shared_ptr<AppletProcess> create(uint32_t index, void* handle);

    AppletProcess(uint32_t index, void* handle);
    AppletProcess(const AppletProcess&) = delete;
    AppletProcess& operator=(const AppletProcess&) = delete;
    virtual ~AppletProcess();

    /// Starts port after port. The first failure ends it, and the ports before stay running.
    virtual void start();
    /// Stops port after port. The first failure ends it, and the ports after it keep running. A process without
    /// ports has nothing to stop, and that is no failure.
    virtual void stop();
    virtual std::shared_ptr<DmaPort> createDmaPort(uint32_t dmaId);

    /// A port that fails is skipped, and the positions close up. Throws if the count can't be had.
    void createDmaPorts();

    // What the board says of the process now. Each throws std::runtime_error if the board doesn't answer; a count
    // above 65,535 is taken for none.
    /// Applets of an older kind don't tell; for process 0 the applet's own file is asked then.
    uint32_t dmaCount() const;
    /// The board's number of the DMA at `position`, which is `position` itself if the applet has no numbers.
    uint32_t dmaId(uint32_t position) const;
    /// The board's number of the camera port at `position`.
    uint32_t camIndex(uint32_t position) const;
    uint32_t camPortCount() const;

    /// Empty for a position without a port.
    std::weak_ptr<DmaPort> dmaPortAt(int32_t position) const;
    /// By the board's number; empty if there is none.
    std::weak_ptr<DmaPort> dmaPortById(uint32_t id) const;
    std::weak_ptr<FeatureContainer> features() const { return m_features; }

    // For all ports, in order.
    void setupAll();
    void setWidth(uint32_t width);
    void setHeight(uint32_t height);
    void setXOffset(uint32_t offset);
    void setYOffset(uint32_t offset);

private:
    void setOnAll(void (DmaPort::*set)(uint32_t), uint32_t value);

    uint32_t m_index;
    void* m_handle;
    std::shared_ptr<FeatureContainer> m_features;   // stays empty; the channels merge it
    std::vector<std::shared_ptr<DmaPort>> m_dmaPorts;
};

/// Throws AIKException if the process has gone: with its applet, which owns it.
std::shared_ptr<AppletProcess> locked(const std::weak_ptr<AppletProcess>& process);

}   // namespace orvo::cognex

#pragma once

#include <utility>

#include "channels/VideoChannel.h"

namespace orvo::cognex {

class BrdConfigurator;
class CameraConnector;

/// A working channel: binds the objects of one stream together, and their features into one set. No logic.
/// Owns: the features' container, the engine and the configurator, and a share of the board's connector;
///       port, process and board have their owners below the BoardContainer, which outlives the channels.
class AikVideoChannel : public VideoChannel {
public:
    AikVideoChannel();
    ~AikVideoChannel() override;

    std::weak_ptr<DmaPort> dmaPort() const override { return m_dmaPort; }
    std::weak_ptr<AppletProcess> appletProcess() const override { return m_process; }
    std::weak_ptr<BoardWrapper> board() const override { return m_board; }
    std::weak_ptr<AcquisitionEngine> acquisitionEngine() const override { return m_engine; }
    std::string name() const override { return m_name; }
    bool isValid() const override { return true; }
    std::weak_ptr<FeatureContainer> features() const override { return m_features; }

    // Called once, by the builder of the channel.
    void setDmaPort(std::weak_ptr<DmaPort> dmaPort) { m_dmaPort = std::move(dmaPort); }
    void setAppletProcess(std::weak_ptr<AppletProcess> process) { m_process = std::move(process); }
    void setBoard(std::weak_ptr<BoardWrapper> board) { m_board = std::move(board); }
    void setName(std::string name) { m_name = std::move(name); }
    void setCameraConnector(std::shared_ptr<CameraConnector> connector)
    {
        m_connector = std::move(connector);
    }
    void setConfigurator(std::shared_ptr<BrdConfigurator> configurator)
    {
        m_configurator = std::move(configurator);
    }
    void setAcquisitionEngine(std::shared_ptr<AcquisitionEngine> engine) { m_engine = std::move(engine); }

private:
    std::shared_ptr<FeatureContainer> m_features;
    std::shared_ptr<AcquisitionEngine> m_engine;
    std::weak_ptr<DmaPort> m_dmaPort;
    std::weak_ptr<AppletProcess> m_process;
    std::weak_ptr<BoardWrapper> m_board;
    std::shared_ptr<CameraConnector> m_connector;
    std::shared_ptr<BrdConfigurator> m_configurator;
    std::string m_name;
};

}   // namespace orvo::cognex

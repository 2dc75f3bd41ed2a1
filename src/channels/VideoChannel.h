#pragma once

#include <memory>
#include <string>
#include <utility>

namespace orvo::cognex {

class AcquisitionEngine;
class AppletProcess;
class BoardWrapper;
class BrdConfigurator;
class CameraConnector;
class DmaPort;
class FeatureContainer;

/// What the host sees as one camera stream: one DMA of one applet process of one board. Gives access to the
/// objects that serve the stream; lock a pointer for the time of one use.
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

/// A working channel: holds the objects of one stream together, and merges their features into one set.
/// Owns: the features' container, the engine and the configurator, and a share of the board's connector. Port,
///       process and board are owned below the BoardContainer, which outlives the channels.
class AikVideoChannel : public VideoChannel {
public:
    AikVideoChannel();
    /// Detaches the engine from the port, which must have stopped.
    ~AikVideoChannel() override;

    std::weak_ptr<DmaPort> dmaPort() const override { return m_dmaPort; }
    std::weak_ptr<AppletProcess> appletProcess() const override { return m_process; }
    std::weak_ptr<BoardWrapper> board() const override { return m_board; }
    std::weak_ptr<AcquisitionEngine> acquisitionEngine() const override { return m_engine; }
    std::string name() const override { return m_name; }
    bool isValid() const override { return true; }
    std::weak_ptr<FeatureContainer> features() const override { return m_features; }

    // Called once, while the channel is built.
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

/// Takes the place of a board that could not be brought up, and reports the reason at every use.
/// Throws: runtime_error with the reason, from every operation that needs the board.
class FailedVideoChannel : public VideoChannel {
public:
    std::weak_ptr<DmaPort> dmaPort() const override { fail(); }
    std::weak_ptr<AppletProcess> appletProcess() const override { fail(); }
    std::weak_ptr<BoardWrapper> board() const override { return m_board; }
    std::weak_ptr<AcquisitionEngine> acquisitionEngine() const override { fail(); }
    std::string name() const override { return m_name; }
    bool isValid() const override { return false; }
    std::weak_ptr<FeatureContainer> features() const override { fail(); }

    /// Empty if not even the board's object could be made.
    void setBoard(std::weak_ptr<BoardWrapper> board) { m_board = std::move(board); }
    void setFailureText(std::string text) { m_failureText = std::move(text); }
    void setName(std::string name) { m_name = std::move(name); }

private:
    [[noreturn]] void fail() const;

    std::weak_ptr<BoardWrapper> m_board;
    std::string m_failureText;
    std::string m_name;
};

}   // namespace orvo::cognex

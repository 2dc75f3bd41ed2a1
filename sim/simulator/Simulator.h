#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "os/ThreadSafety.h"
#include "sim/seam/Core.h"
#include "sim/simulator/BoardsFile.h"
#include "sim/simulator/Journal.h"
#include "sim/simulator/Ledger.h"
#include "sim/simulator/Script.h"
#include "sim/simulator/SimulatedCamera.h"

namespace orvo::sim {

/// All cameras by board and port. None is ever destroyed: pointers to them stay good. Threads: any.
class CameraRack {
public:
    /// For the beginning of a session.
    void unplugAll();
    void plugIn(uint32_t boardIndex, const CameraDescription& description);

    /// Null for a port without a described camera.
    SimulatedCamera* find(uint32_t boardIndex, uint32_t port) const;
    /// By rising port number.
    std::vector<SimulatedCamera*> camerasOf(uint32_t boardIndex) const;
    void bringAllBack();

private:
    mutable os::Mutex m_mutex;
    std::map<std::pair<uint32_t, uint32_t>, SimulatedCamera*> m_cameras ORVO_GUARDED_BY(m_mutex);
};

/// The only core of the process. Stand-ins see it as Core, the control interface sees its parts.
class Simulator final : public Core, private CallRecorder {
public:
    /// Made at the first call and never destroyed: pictures may flow while the process ends.
    static Simulator& instance();

    Journal& journal() { return m_journal; }
    Script& script() { return m_script; }
    Ledger& ledger() { return m_ledger; }
    CameraRack& cameras() { return m_cameras; }
    /// Null as long as no board library is in use.
    PictureDelivery* delivery() const { return m_delivery; }
    void setManual(bool manual) { m_manual = manual; }
    void setMessages(bool on) { m_messages = on; }
    /// As say(), but also while messages are off.
    static void insist(std::string_view message);

    void beginSession() override;
    void endSession() override;
    bool findBoard(uint32_t index, BoardDescription& board) const override;
    std::string_view boardsFileError() const override;
    CallRecorder& calls() override { return *this; }
    DmaAccount& account(uint32_t boardIndex, uint32_t dma) override;
    bool isManual() const override { return m_manual; }
    void setDelivery(PictureDelivery& delivery) override { m_delivery = &delivery; }
    void say(std::string_view message) override;
    uint64_t session() const override { return m_session; }
    void setBoardHandle(uint32_t index, uint64_t handle) override;
    bool findOpenBoard(uint64_t handle, uint32_t& index) const override;
    Camera* camera(uint32_t boardIndex, uint32_t port) override;
    void sendToPort(uint32_t boardIndex, uint32_t port, const ActionCommand& command) override;
    void sendToAll(uint32_t boardIndex, const ActionCommand& command) override;
    void setAppletInfo(int32_t answer) override { m_appletInfo = answer; }
    int32_t appletInfo() const override { return m_appletInfo; }

private:
    bool isWatching() const override;
    CallPass enter(std::string_view function, std::string_view arguments) override;
    void leave(const CallPass& pass, std::string_view rest) override;

    static void trigger(const std::vector<SimulatedCamera*>& cameras, const ActionCommand& command);
    void readBoardsFile();
    void write(const std::filesystem::path& path, const std::string& text);

    Journal m_journal;
    Script m_script;
    Ledger m_ledger;
    CameraRack m_cameras;
    std::atomic<PictureDelivery*> m_delivery{nullptr};
    std::atomic<bool> m_manual{false};
    std::atomic<bool> m_messages{true};
    std::atomic<int32_t> m_appletInfo{0};
    std::atomic<uint64_t> m_session{0};
    std::array<std::atomic<uint64_t>, BoardsFile::kMostBoards> m_boardHandles{};   // 0: not open

    BoardsFile m_boards;   // changes only when a session begins
    std::string m_boardsFileError;
};

}   // namespace orvo::sim

#pragma once

#include <atomic>
#include <string>
#include <string_view>

#include "sim/core/BoardsFile.h"
#include "sim/core/Core.h"
#include "sim/core/Journal.h"
#include "sim/core/Ledger.h"
#include "sim/core/Script.h"

namespace orvo::sim {

/// The one core of the process: what stand-ins see of it is Core, what the wheel sees are its parts.
class Simulator final : public Core, private CallRecorder {
public:
    /// Made at the first call and never destroyed: pictures may flow while the process ends.
    static Simulator& instance();

    Journal& journal() { return m_journal; }
    Script& script() { return m_script; }
    Ledger& ledger() { return m_ledger; }
    /// Null as long as no board library is in use.
    PictureDelivery* delivery() const { return m_delivery; }
    void setManual(bool manual) { m_manual = manual; }
    void setMessages(bool on) { m_messages = on; }

    void beginLife() override;
    void endLife() override;
    bool findBoard(uint32_t index, BoardDescription& board) const override;
    std::string_view boardsFileError() const override;
    CallRecorder& calls() override { return *this; }
    DmaAccount& account(uint32_t boardIndex, uint32_t dma) override;
    bool isManual() const override { return m_manual; }
    void setDelivery(PictureDelivery& delivery) override { m_delivery = &delivery; }
    void say(std::string_view message) override;
    void setAppletInfo(int32_t answer) override { m_appletInfo = answer; }
    int32_t appletInfo() const override { return m_appletInfo; }

private:
    bool isWatching() const override;
    CallPass enter(std::string_view function, std::string_view arguments) override;
    void leave(const CallPass& pass, std::string_view rest) override;

    void readBoardsFile();
    void write(const std::string& path, const std::string& text);

    Journal m_journal;
    Script m_script;
    Ledger m_ledger;
    std::atomic<PictureDelivery*> m_delivery{nullptr};
    std::atomic<bool> m_manual{false};
    std::atomic<bool> m_messages{true};
    std::atomic<int32_t> m_appletInfo{0};

    BoardsFile m_boards;   // changes only where a life begins
    std::string m_boardsFileError;
};

}   // namespace orvo::sim

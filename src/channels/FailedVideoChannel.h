#pragma once

#include <utility>

#include "channels/VideoChannel.h"

namespace orvo::cognex {

/// Stands in the place of a board that could not be brought up, and gives the reason at every use.
/// Throws: runtime_error with the reason, from all that it can't hand out.
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

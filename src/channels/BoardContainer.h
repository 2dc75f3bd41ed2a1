#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tools/logging/Logging.h"

namespace orvo::cognex {

class AppletProcess;
class BoardWrapper;
class VideoChannel;

/// Turns the hardware into the flat list of channels. A board that fails contributes one failed channel and
/// does not affect the others.
/// Threads: the host thread of the first GetVideoChannel, no lock.
/// Owns:    the boards, and a use of the board library.
class BoardContainer {
public:
    using Channels = std::vector<std::shared_ptr<VideoChannel>>;

    BoardContainer();
    BoardContainer(const BoardContainer&) = delete;
    BoardContainer& operator=(const BoardContainer&) = delete;
    virtual ~BoardContainer();

    /// Brings up all boards and builds their channels: board by board, process by process, DMA by DMA. Once.
    Channels channels();

    virtual tools::logging::Logger* logger() { return m_logger.get(); }

private:
    void openBoard(const std::shared_ptr<BoardWrapper>& board, Channels& channels);
    static Channels channelsOf(const std::shared_ptr<BoardWrapper>& board);
    static void addAdapterFeatures(const Channels& channels);
    std::shared_ptr<VideoChannel> failedChannel(const std::string& name, const std::exception& failure,
                                                const std::shared_ptr<BoardWrapper>& board);

    tools::logging::CachedLogger m_logger{"orvo.Cognex.BoardContainer"};
    std::vector<std::shared_ptr<BoardWrapper>> m_boards;   // also those whose applet failed
};

}   // namespace orvo::cognex

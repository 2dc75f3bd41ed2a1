#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>

namespace orvo::cognex {

class BoardContainer;
class VideoChannel;

/// The process-wide list of all channels, and of those that the host has open.
/// Threads: host. No lock: the host serialises opening and releasing, and lets no other call overlap them.
/// Owns:    the boards and the channels.
class ChannelTable {
public:
    static bool exists();
    /// Makes the table at the first call, which starts the use of the board library.
    static ChannelTable& instance();
    /// Stops every running port, destroys the channels, then the boards, and ends the use of the library.
    static void destroyInstance();

    ChannelTable(const ChannelTable&) = delete;
    ChannelTable& operator=(const ChannelTable&) = delete;

    /// Opens the boards and adds their channels. At most once for a table.
    void populate();
    /// Returns the channel's id: counted from 1, in the order of adding.
    int64_t addChannel(std::shared_ptr<VideoChannel> channel);

    /// By position, from 0, in the order of adding. Throws runtime_error for any other.
    std::weak_ptr<VideoChannel> channelAt(int64_t position) const;
    int64_t idAt(int64_t position) const;

    /// Throws AIKException if the id is open already or was never handed out.
    std::weak_ptr<VideoChannel> open(int64_t id);
    /// Throws AIKException if the id isn't open.
    const std::weak_ptr<VideoChannel>& openChannel(int64_t id) const;
    /// Ignores an id that isn't open.
    void close(int64_t id) { m_openChannels.erase(id); }
    size_t openCount() const { return m_openChannels.size(); }

private:
    ChannelTable() = default;
    ~ChannelTable();

    void stopAll() noexcept;

    std::shared_ptr<BoardContainer> m_boards;
    int64_t m_lastId = 0;
    std::unordered_map<int64_t, std::weak_ptr<VideoChannel>> m_openChannels;
    std::map<int64_t, std::shared_ptr<VideoChannel>> m_allChannels;   // rising ids are the order of adding
};

}   // namespace orvo::cognex

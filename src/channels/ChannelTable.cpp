#include "channels/ChannelTable.h"

#include <iterator>
#include <stdexcept>

#include "AIKException.h"
#include "brdlib/DmaPort.h"
#include "brdlib/binding/BrdFunctions.h"
#include "channels/BoardContainer.h"
#include "channels/VideoChannel.h"

namespace orvo::cognex {

namespace {

ChannelTable* g_instance = nullptr;   // plain: no destructor of ours may run at the end of the process

template <typename Map>
auto entryAt(const Map& channels, int64_t position)
{
    if (position < 0 || position >= static_cast<int64_t>(channels.size()))
        throw std::runtime_error("index is not valid");
    return std::next(channels.begin(), position);
}

}   // namespace

bool ChannelTable::exists()
{
    return g_instance != nullptr;
}

ChannelTable& ChannelTable::instance()
{
    if (!g_instance) {
        const auto destroy = [](ChannelTable* table) { delete table; };
        std::unique_ptr<ChannelTable, decltype(destroy)> table(new ChannelTable);
        Brd_InitLibraries(nullptr);   // counts a use, so nothing after it may fail
        g_instance = table.release();
    }
    return *g_instance;
}

void ChannelTable::destroyInstance()
{
    if (!g_instance)
        return;
    delete g_instance;
    g_instance = nullptr;
    Brd_FreeLibraries();
}

ChannelTable::~ChannelTable()
{
    stopAll();
    while (
        !m_allChannels.empty())   // in the order of the list; a board's last channel destroys its connector
        m_allChannels.erase(m_allChannels.begin());
    m_boards.reset();
}

void ChannelTable::populate()
{
    m_boards = std::make_shared<BoardContainer>();
    for (auto& channel : m_boards->channels())
        addChannel(std::move(channel));
}

int64_t ChannelTable::addChannel(std::shared_ptr<VideoChannel> channel)
{
    m_allChannels.emplace(m_lastId + 1, std::move(channel));
    return ++m_lastId;
}

std::weak_ptr<VideoChannel> ChannelTable::channelAt(int64_t position) const
{
    return entryAt(m_allChannels, position)->second;
}

int64_t ChannelTable::idAt(int64_t position) const
{
    return entryAt(m_allChannels, position)->first;
}

std::weak_ptr<VideoChannel> ChannelTable::open(int64_t id)
{
    if (m_openChannels.contains(id))
        throw AIKException("Handle already exists");
    const auto channel = m_allChannels.find(id);
    if (channel == m_allChannels.end())
        throw AIKException("Channel does not exits");
    return m_openChannels[id] = channel->second;
}

const std::weak_ptr<VideoChannel>& ChannelTable::openChannel(int64_t id) const
{
    const auto channel = m_openChannels.find(id);
    if (channel == m_openChannels.end())
        throw AIKException("Invalid channelID");
    return channel->second;
}

void ChannelTable::stopAll() noexcept
{
    // No engine may go while a board can still call it. Each running port is stopped once here, whatever it
    // answers: a board that answers an error has stopped all the same.
    for (const auto& [id, channel] : m_allChannels) {
        try {
            if (!channel->isValid())
                continue;
            const auto port = locked(channel->dmaPort());
            if (port->isRunning())
                port->stop();
        } catch (const std::exception&) {
        }
    }
}

}   // namespace orvo::cognex

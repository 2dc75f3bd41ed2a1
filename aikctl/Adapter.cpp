#include "aikctl/Adapter.h"

#include <array>
#include <filesystem>

#include "aikctl/requireLibraries.h"
#include "os/Os.h"

namespace orvo::aikctl {

namespace {

constexpr const char* kEndOfChannels = "index is not valid";

std::string absolutePath(const std::string& path)
{
    return std::filesystem::weakly_canonical(std::filesystem::absolute(path)).make_preferred().string();
}

os::Module load(const std::string& path)
{
    os::Error error;
    os::Module library = os::loadLibrary(path, os::Neighbours::BesideTheLibrary, &error);
    if (!library)
        throw std::runtime_error("The adapter can't be loaded: " + path + ": " + error.text + " (" +
                                 std::to_string(error.number) + ")");
    return library;
}

}   // namespace

std::string Adapter::defaultPath()
{
    const std::filesystem::path program = os::modulePath(reinterpret_cast<const void*>(&absolutePath));
    return (program.parent_path() / "OrvoCognexAdapter").string() + os::kLibraryEnding;
}

Adapter::Adapter(const std::string& path) : m_path(absolutePath(path))
{
    requireLibraries(m_path);
    m_exports = findExports(load(m_path), m_path);
}

std::vector<Channel> Adapter::openAll() const
{
    std::vector<Channel> channels;
    try {
        for (;;) {
            auto channel = tryToOpen(static_cast<int32_t>(channels.size()));
            if (!channel)
                break;
            channels.push_back(std::move(*channel));
        }
    } catch (const AdapterFailure&) {
        if (channels.empty())
            shutDown();
        throw;
    }
    if (channels.empty())
        shutDown();
    return channels;
}

Channel Adapter::open(int32_t index) const
{
    try {
        if (auto channel = tryToOpen(index)) {
            if (!channel->failure().empty())
                throw std::runtime_error("Channel " + std::to_string(index) + ": " + channel->failure());
            return std::move(*channel);
        }
    } catch (const AdapterFailure&) {
        shutDown();
        throw;
    }
    shutDown();
    throw std::runtime_error("There is no channel " + std::to_string(index));
}

std::optional<Channel> Adapter::tryToOpen(int32_t index) const
{
    csAIK_ChannelRecord record{};
    record.size = sizeof(record);
    std::string failure;
    try {
        call(m_exports.getVideoChannel, index, &record);
    } catch (const AdapterFailure& refusal) {
        failure = refusal.what();
    }
    if (record.channelID != 0)   // open, also where a later step of the call failed
        return Channel(m_exports, index, record, failure);
    if (failure != kEndOfChannels)
        throw AdapterFailure(failure);
    return std::nullopt;
}

// With no channel open, a release fails, and lets go of the boards all the same.
void Adapter::shutDown() const
{
    std::array<char, AIK_ERRSTR_SIZE> expected{};
    m_exports.releaseVideoChannel(expected.data(), 0);
}

}   // namespace orvo::aikctl
